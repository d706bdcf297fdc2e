#include <QDirIterator>
#include <QRegularExpression>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

const QDir kRoot(QStringLiteral(ORVELLA_SOURCE_DIR));

struct Source {
    QString path;
    QString text;
};

std::vector<Source> sources()
{
    std::vector<Source> result;
    QDirIterator files(kRoot.filePath(u"Velmora"_s), {u"*.cpp"_s, u"*.h"_s}, QDir::Files, QDirIterator::Subdirectories);
    while (files.hasNext()) {
        QFile file(files.next());
        if (file.open(QFile::ReadOnly))
            result.push_back({kRoot.relativeFilePath(file.fileName()), QString::fromUtf8(file.readAll())});
    }
    return result;
}

/// Where the expression occurs, as "path: what matched".
QStringList findings(const QRegularExpression& expression)
{
    QStringList result;
    for (const auto& source : sources()) {
        for (const auto& match : expression.globalMatch(source.text))
            result.append(source.path + u": "_s + match.captured());
    }
    return result;
}

} // namespace

/// That certificates are verified is shown by what the program does; this shows that nothing can change it.
class TrustTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void verificationIsSwitchedOnInOnePlaceAndNowhereOff()
    {
        const QRegularExpression verification(u"CURLOPT_\\w*VERIFY\\w*[^)]*"_s);

        QCOMPARE(findings(verification),
            (QStringList {
                u"Velmora/api/CurlTransfer.cpp: CURLOPT_SSL_VERIFYPEER, 1L"_s,
                u"Velmora/api/CurlTransfer.cpp: CURLOPT_SSL_VERIFYHOST, 2L"_s,
            }));
    }

    void onlyTheTestsNameOtherAuthorities()
    {
        const QRegularExpression assigned(u"\\bauthorities\\b *(=|\\{)[^;,}]*"_s);

        QCOMPARE(findings(assigned), QStringList {u"Velmora/api/CurlOptions.h: authorities = {"_s});
    }

    void authoritiesAndProtocolsAreNamedInOnePlace()
    {
        const QRegularExpression named(u"CURLOPT_\\w*(CAINFO|CAPATH|CRLFILE|SSLVERSION|CIPHER)\\w*[^)]*"_s);

        QCOMPARE(findings(named),
            (QStringList {
                u"Velmora/api/CurlTransfer.cpp: CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_2"_s,
                u"Velmora/api/CurlTransfer.cpp: CURLOPT_CAINFO, options.authorities.constData("_s,
                u"Velmora/api/CurlTransfer.cpp: CURLOPT_CAPATH, nullptr"_s,
                u"Velmora/api/CurlTransfer.cpp: CURLOPT_CAINFO, nullptr"_s,
            }));
    }

    void noOtherWayAroundTheVerificationIsTaken()
    {
        const QRegularExpression ways(
            u"CURLOPT_SSL_CTX_\\w+|CURLOPT_\\w*SSL_OPTIONS|CURLOPT_CONNECT_TO|CURLOPT_RESOLVE|CURLOPT_DOH_\\w+"
            "|CURLOPT_NETRC\\w*|CURLOPT_UNRESTRICTED_AUTH|CURLOPT_FOLLOWLOCATION, [^0]"
            "|VerifyNone|QueryPeer|ignoreSslErrors|QNetworkAccessManager|SSL_CERT_\\w+"_s);

        QCOMPARE(findings(ways), QStringList());
    }
};

QTEST_GUILESS_MAIN(TrustTest)

#include "TrustTest.moc"
