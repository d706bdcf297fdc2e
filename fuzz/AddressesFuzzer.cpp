#include "Claim.h"
#include "api/Endpoints.h"
#include "api/ServiceAddress.h"
#include "base/WebAddress.h"

#include <QRegularExpression>
#include <QStringList>

#include <algorithm>
#include <arpa/inet.h>
#include <curl/curl.h>
#include <memory>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What libcurl, whose reader is another one than Qt's, finds in an address.
class ByCurl final {
public:
    explicit ByCurl(const QByteArray& address)
        : m_isValid(curl_url_set(m_handle.get(), CURLUPART_URL, address.constData(), 0) == CURLUE_OK)
    {
    }

    [[nodiscard]] bool isValid() const { return m_isValid; }

    /// Empty where there is none.
    [[nodiscard]] QByteArray part(CURLUPart part) const
    {
        char* text = nullptr;
        if (curl_url_get(m_handle.get(), part, &text, 0) != CURLUE_OK)
            return {};
        const QByteArray bytes(text);
        curl_free(text);
        return bytes;
    }

private:
    struct Cleanup {
        void operator()(CURLU* handle) const { curl_url_cleanup(handle); }
    };

    std::unique_ptr<CURLU, Cleanup> m_handle {curl_url()};
    bool m_isValid;
};

bool isPlain(char byte)
{
    return byte > ' ' && byte < '\x7f' && byte != '\\';
}

bool isClear(QChar character)
{
    return character.category() != QChar::Other_Format && character.category() != QChar::Other_Control
        && !u"@%\\ "_s.contains(character);
}

/// Host and port as they are written are what they look like.
void theAuthorityIsWhatItLooksLike(const QString& text, const QUrl& address)
{
    static const QRegularExpression end(u"[/?#]"_s);
    const auto authority = text.section(u"://"_s, 1).section(end, 0, 0);
    claim(std::ranges::all_of(authority, isClear), "a host has no sign that hides or turns another one");
    const auto port = authority.section(u']', -1).section(u':', 1);
    claim(port.isEmpty() ? address.port() == -1 : port.toULongLong() == static_cast<qulonglong>(address.port()),
        "a port is the number that is written");
}

/// What a browser is handed has one meaning, and it is that of a web page.
void aWebAddressIsClear(const QString& text)
{
    const auto address = webAddress(text);
    if (!address)
        return;
    const auto encoded = address->toEncoded();
    const auto host = address->host(QUrl::FullyEncoded).toLatin1();
    claim(encoded.startsWith("http://") || encoded.startsWith("https://"), "a web address is http or https");
    claim(!host.isEmpty() && address->userInfo().isEmpty(), "a web address has a host and no user");
    claim(std::ranges::all_of(encoded, isPlain), "a web address has no control character, space or backslash");
    const auto again = webAddress(QString::fromLatin1(encoded));
    claim(again && again->toEncoded() == encoded, "a web address stays as it is when it is handed on");

    theAuthorityIsWhatItLooksLike(text, *address);
    in_addr number {};
    claim(inet_aton(host.constData(), &number) == 0 || host == inet_ntoa(number),
        "a number is an address in its usual form");
    const ByCurl byCurl(encoded);
    claim(byCurl.isValid(), "a web address is one to libcurl");
    claim(byCurl.part(CURLUPART_SCHEME) == address->scheme().toLatin1(), "libcurl finds the same scheme");
    const auto hostByCurl = byCurl.part(CURLUPART_HOST).toLower();
    claim(hostByCurl == host || hostByCurl == '[' + host + ']', "libcurl finds the same host");
    claim(byCurl.part(CURLUPART_USER).isEmpty(), "libcurl finds no user");
    const auto port = byCurl.part(CURLUPART_PORT);
    claim(port.isEmpty() ? address->port() == -1 : port.toInt() == address->port(), "libcurl finds the same port");
}

/// RFC 3986, section 5.2.4, by segments.
QString withoutDots(const QString& path)
{
    QStringList kept;
    auto segments = path.split(u'/');
    for (qsizetype index = 1; index < segments.size(); ++index) {
        const auto& segment = segments[index];
        const bool isLast = index + 1 == segments.size();
        if (segment == u".."_s && !kept.isEmpty())
            kept.removeLast();
        if (segment != u"."_s && segment != u".."_s)
            kept.append(segment);
        else if (isLast)
            kept.append(QString());
    }
    return u'/' + kept.join(u'/');
}

bool hasOriginOf(const QUrl& base, const QUrl& address)
{
    return address.scheme() == base.scheme()
        && address.authority(QUrl::FullyEncoded) == base.authority(QUrl::FullyEncoded);
}

/// A call goes to the base's origin, below the base's folder, whatever the base is.
void callsStayBelowTheBase(const QUrl& base)
{
    const auto basePath = base.path(QUrl::FullyEncoded);
    const auto folder = basePath.first(basePath.lastIndexOf(u'/') + 1);
    for (const auto path : {endpoints::kRegister, endpoints::kWallet, endpoints::kSessionComplete}) {
        const auto address = ServiceAddress::resolve(base, path);
        claim(hasOriginOf(base, address), "a call keeps the base's origin");
        claim(!address.hasQuery() && !address.hasFragment(), "a call has nothing of the base's query");
        const auto expected = withoutDots((folder.isEmpty() ? u"/"_s : folder) + QString(path).sliced(1));
        claim(address.path(QUrl::FullyEncoded) == expected, "a call's path is below the base's folder");
    }
    const auto page = ServiceAddress::viewerPage(base);
    claim(hasOriginOf(base, page) && page.path() == u"/viewer"_s && !page.hasQuery() && !page.hasFragment(),
        "the viewer's page is on the base's host");
}

/// Any path that is a reference without a host of its own keeps the base's origin. What is no reference is not tried:
/// it would end the program, as it should.
void aPathWithoutAHostKeepsTheOrigin(const QUrl& base, const QString& path)
{
    const auto rest = path.startsWith(u'/') ? path.sliced(1) : path;
    const QUrl reference(rest, QUrl::StrictMode);
    if (!reference.isValid() || !reference.isRelative() || !reference.authority().isEmpty() || rest.startsWith(u"//"_s)
        || !base.resolved(reference).isValid())
        return;
    claim(hasOriginOf(base, ServiceAddress::resolve(base, path)), "a path keeps the base's origin");
}

} // namespace

/// The first line is an address; the second one, where there is one, a path.
extern "C" int LLVMFuzzerTestOneInput(const uint8_t* data, size_t size)
{
    const auto text = QString::fromUtf8(reinterpret_cast<const char*>(data), static_cast<qsizetype>(size));
    aWebAddressIsClear(text);
    const auto address = text.section(u'\n', 0, 0);
    aWebAddressIsClear(address);

    // What the program takes for the address of its service.
    const QUrl base(address, QUrl::StrictMode);
    const bool isWeb = base.scheme() == u"https" || base.scheme() == u"http";
    if (!base.isValid() || !isWeb || base.host().isEmpty())
        return 0;
    callsStayBelowTheBase(base);
    aPathWithoutAHostKeepsTheOrigin(base, text.section(u'\n', 1));
    return 0;
}
