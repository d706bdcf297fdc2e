#include "api/CurlTransfer.h"

#include "api/CurlFailure.h"
#include "api/CurlLibrary.h"
#include "api/CurlThread.h"
#include "api/DesktopProxy.h"
#include "api/ThisComputer.h"
#include "base/Version.h"

#include <QCoreApplication>

#include <algorithm>
#include <memory>
#include <string_view>

namespace orvella {

namespace {

using Easy = std::unique_ptr<CURL, decltype(&curl_easy_cleanup)>;
using Multi = std::unique_ptr<CURLM, decltype(&curl_multi_cleanup)>;
using HeaderList = std::unique_ptr<curl_slist, decltype(&curl_slist_free_all)>;

// A little less than what libcurl itself takes.
constexpr std::size_t kGreatestHead = 262'144;

struct Incoming {
    qsizetype greatestBody;
    std::size_t headSize = 0;
    bool isHeadComplete = false;
    QByteArray body;
    bool isTooLarge = false;
};

// libcurl calls these two with what comes in, the head line by line; another answer than `count` ends the transfer.
std::size_t takeHead(const char* bytes, std::size_t, std::size_t count, void* into)
{
    auto& incoming = *static_cast<Incoming*>(into);
    incoming.headSize += count;
    incoming.isTooLarge = incoming.headSize > kGreatestHead;
    if (incoming.isTooLarge)
        return 0;

    // Each interim reply has a head of its own.
    const std::string_view line(bytes, count);
    if (line.starts_with("HTTP/"))
        incoming.isHeadComplete = false;
    else if (line == "\r\n" || line == "\n")
        incoming.isHeadComplete = true;
    return count;
}

std::size_t takeBody(const char* bytes, std::size_t, std::size_t count, void* into)
{
    auto& incoming = *static_cast<Incoming*>(into);
    const auto size = static_cast<qsizetype>(count);
    incoming.isTooLarge = size > incoming.greatestBody - incoming.body.size();
    if (incoming.isTooLarge)
        return 0;
    incoming.body.append(bytes, size);
    return count;
}

bool append(const CurlLibrary& curl, HeaderList& list, const QByteArray& line)
{
    auto* const shorter = list.release();
    auto* const longer = curl.slistAppend(shorter, line.constData());
    list.reset(longer == nullptr ? shorter : longer);
    return longer != nullptr;
}

bool isOneLine(const QByteArray& text)
{
    return std::ranges::none_of(text, [](char byte) { return byte == '\r' || byte == '\n' || byte == '\0'; });
}

// libcurl takes "name;" for a header without a value.
QByteArray line(const HttpRequest::Header& header)
{
    return header.second.isEmpty() ? header.first + ';' : header.first + ": " + header.second;
}

// All that goes out but Host, whose spelling is libcurl's. What would be added unasked is set here, in lower case.
// Nothing where they cannot be written.
HeaderList headerList(const CurlLibrary& curl, const HttpRequest& request)
{
    HeaderList list(nullptr, curl.slistFreeAll);
    std::vector<QByteArray> lines {
        "user-agent: Orvella/" + QByteArray(kVersion.data(), kVersion.size()), "accept: */*", "expect:"};
    if (request.method == "POST")
        lines.push_back("content-length: " + QByteArray::number(request.body.size()));
    for (const auto& header : request.headers) {
        if (!isOneLine(header.first) || !isOneLine(header.second))
            return list;
        lines.push_back(line(header));
    }
    if (!std::ranges::all_of(lines, [&](const auto& each) { return append(curl, list, each); }))
        list.reset();
    return list;
}

void setRequest(
    const CurlLibrary& curl, CURL* easy, const HttpRequest& request, const QByteArray& url, const HeaderList& headers)
{
    curl.easySetopt(easy, CURLOPT_URL, url.constData());
    curl.easySetopt(easy, CURLOPT_PROTOCOLS_STR, "http,https");
    curl.easySetopt(easy, CURLOPT_PATH_AS_IS, 1L);
    curl.easySetopt(easy, CURLOPT_HTTPHEADER, headers.get());
    if (request.method == "POST") {
        curl.easySetopt(easy, CURLOPT_POST, 1L);
        curl.easySetopt(easy, CURLOPT_POSTFIELDSIZE_LARGE, static_cast<curl_off_t>(request.body.size()));
        curl.easySetopt(easy, CURLOPT_POSTFIELDS, request.body.constData());
    }
}

void setRules(const CurlLibrary& curl, CURL* easy, const CurlOptions& options)
{
    // libcurl sends a request again when a kept connection breaks, or when HTTP/2 says that it was not looked at. A
    // completion must be sent once, so there is a new connection for each and no HTTP/2.
    curl.easySetopt(easy, CURLOPT_FRESH_CONNECT, 1L);
    curl.easySetopt(easy, CURLOPT_FORBID_REUSE, 1L);
    curl.easySetopt(easy, CURLOPT_HTTP_VERSION, static_cast<long>(CURL_HTTP_VERSION_1_1));

    // A redirect would take the token along.
    curl.easySetopt(easy, CURLOPT_FOLLOWLOCATION, 0L);

    curl.easySetopt(easy, CURLOPT_TIMEOUT_MS, static_cast<long>(options.limit.count()));
    // Signals belong to the program, and a name service that does not answer must not hold up an end.
    curl.easySetopt(easy, CURLOPT_NOSIGNAL, 1L);
    curl.easySetopt(easy, CURLOPT_QUICK_EXIT, 1L);
}

void setTrust(const CurlThread& thread, CURL* easy, const CurlOptions& options)
{
    const auto& curl = thread.curl();
    curl.easySetopt(easy, CURLOPT_SHARE, thread.tlsSessions());
    curl.easySetopt(easy, CURLOPT_SSL_VERIFYPEER, 1L);
    curl.easySetopt(easy, CURLOPT_SSL_VERIFYHOST, 2L);
    curl.easySetopt(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2));
    if (!options.authorities.isEmpty()) {
        curl.easySetopt(easy, CURLOPT_CAINFO, options.authorities.constData());
        curl.easySetopt(easy, CURLOPT_CAPATH, nullptr);
    } else if (thread.hasHashedAuthorities()) {
        // Reading the file with all of them takes long, for each connection; of the hashed ones just one is read.
        curl.easySetopt(easy, CURLOPT_CAINFO, nullptr);
    }
}

void setIncoming(const CurlLibrary& curl, CURL* easy, Incoming& incoming)
{
    // A declared length is refused before the body comes, any other one when it is passed.
    curl.easySetopt(easy, CURLOPT_MAXFILESIZE_LARGE, static_cast<curl_off_t>(incoming.greatestBody));
    curl.easySetopt(easy, CURLOPT_HEADERFUNCTION, takeHead);
    curl.easySetopt(easy, CURLOPT_HEADERDATA, &incoming);
    curl.easySetopt(easy, CURLOPT_WRITEFUNCTION, takeBody);
    curl.easySetopt(easy, CURLOPT_WRITEDATA, &incoming);
}

Failure failureOf(const CurlLibrary& curl, CURL* easy, CURLcode code)
{
    // libcurl reports a proxy that refuses as a connection that broke.
    long proxyStatus = 0;
    curl.easyGetinfo(easy, CURLINFO_HTTP_CONNECTCODE, &proxyStatus);
    if (code == CURLE_RECV_ERROR && proxyStatus >= 300)
        return curlFailure(CURLE_PROXY, 0);

    long verification = 0;
    curl.easyGetinfo(easy, CURLINFO_SSL_VERIFYRESULT, &verification);
    return curlFailure(code, verification);
}

} // namespace

CurlTransfer::CurlTransfer(CurlOptions options)
    : m_options(std::move(options))
{
}

Result<HttpReply> CurlTransfer::perform(const HttpRequest& request)
{
    const auto scheme = request.url.scheme();
    if (scheme != u"https" && scheme != u"http")
        return std::unexpected(curlFailure(CURLE_URL_MALFORMAT, 0));

    const auto& thread = CurlThread::current();
    const auto& curl = thread.curl();
    if (!curl.isReady())
        return std::unexpected(curlFailure(CURLE_FAILED_INIT, 0));
    const auto headers = headerList(curl, request);
    if (!headers)
        return failed(Failure::Kind::unencodable,
            QCoreApplication::translate("CurlTransport", "The request could not be written."));

    const Easy easy(curl.easyInit(), curl.easyCleanup);
    const auto url = request.url.toEncoded();
    Incoming incoming {.greatestBody = m_options.greatestReply, .body = {}};
    setRequest(curl, easy.get(), request, url, headers);
    setRules(curl, easy.get(), m_options);
    setTrust(thread, easy.get(), m_options);
    setIncoming(curl, easy.get(), incoming);
    setProxy(curl, easy.get(), request.url);

    const auto code = drive(curl, easy.get());
    if (isAborted())
        return failed(Failure::Kind::cancelled);
    if (incoming.isTooLarge)
        return std::unexpected(answerTooLarge());
    if (code != CURLE_OK)
        return std::unexpected(failureOf(curl, easy.get(), code));

    // libcurl takes a connection that ends within the head for the end of a reply without a body.
    if (!incoming.isHeadComplete)
        return std::unexpected(curlFailure(CURLE_PARTIAL_FILE, 0));

    long status = 0;
    curl.easyGetinfo(easy.get(), CURLINFO_RESPONSE_CODE, &status);
    return HttpReply {static_cast<int>(status), std::move(incoming.body)};
}

void CurlTransfer::setProxy(const CurlLibrary& curl, CURL* easy, const QUrl& url)
{
    // A proxy would take what is meant for this computer out of it, and over plain http in everyone's sight.
    if (isThisComputer(url.host())) {
        curl.easySetopt(easy, CURLOPT_NOPROXY, "*");
        return;
    }
    if (!m_options.proxies)
        return;
    // Without an option libcurl follows the environment; an empty one is no proxy. Exceptions of the environment count
    // for either.
    if (const auto proxy = desktopProxy(url, *m_options.proxies, m_stop.get_token()))
        curl.easySetopt(easy, CURLOPT_PROXY, proxy->toEncoded().constData());
}

CURLcode CurlTransfer::drive(const CurlLibrary& curl, CURL* easy)
{
    const Multi multi(curl.multiInit(), curl.multiCleanup);
    if (!multi)
        return CURLE_OUT_OF_MEMORY;
    const std::stop_callback wakeUp(m_stop.get_token(), [&] { curl.multiWakeup(multi.get()); });
    curl.multiAddHandle(multi.get(), easy);
    int running = 1;
    auto state = CURLM_OK;
    while (state == CURLM_OK && running > 0 && !isAborted()) {
        state = curl.multiPerform(multi.get(), &running);
        // It also returns when one of libcurl's own timers is due, so the bound is not what ends a transfer.
        if (state == CURLM_OK && running > 0)
            state = curl.multiPoll(multi.get(), nullptr, 0, static_cast<int>(m_options.limit.count()), nullptr);
    }

    int left = 0;
    const auto* const message = curl.multiInfoRead(multi.get(), &left);
    const auto code = message == nullptr ? CURLE_FAILED_INIT : message->data.result;
    curl.multiRemoveHandle(multi.get(), easy);
    return code;
}

void CurlTransfer::abort()
{
    m_stop.request_stop();
}

} // namespace orvella
