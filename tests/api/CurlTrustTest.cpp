#include "support/RawAnswers.h"
#include "support/TestAuthority.h"
#include "support/TransportCall.h"
#include "support/Variable.h"
#include "support/WaitFor.h"

#include <QDir>
#include <QProcess>
#include <QTest>

#include <curl/curl.h>

#include <future>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto kLoopback = "IP:127.0.0.1"_L1;

void write(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QFile::WriteOnly))
        qFatal("A file of the test cannot be written.");
    file.write(text);
}

/// What libcurl makes of a server when nobody but OpenSSL's configuration says how old TLS may be.
CURLcode askCarelessly(const QByteArray& url, const QByteArray& authorities)
{
    auto* const easy = curl_easy_init();
    curl_easy_setopt(easy, CURLOPT_URL, url.constData());
    curl_easy_setopt(easy, CURLOPT_CAINFO, authorities.constData());
    curl_easy_setopt(easy, CURLOPT_SSLVERSION, static_cast<long>(CURL_SSLVERSION_TLSv1_0));
    curl_easy_setopt(easy, CURLOPT_NOBODY, 1L);
    const auto code = curl_easy_perform(easy);
    curl_easy_cleanup(easy);
    return code;
}

} // namespace

/// Whom the program trusts, in surroundings that would have it trust more. OpenSSL's configuration is a careless one.
class CurlTrustTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { QVERIFY(qEnvironmentVariableIsSet("OPENSSL_CONF")); }

    void aProtocolOfOldDaysIsRefusedWhateverTheSystemAllows_data()
    {
        QTest::addColumn<QByteArray>("protocol");
        QTest::newRow("TLS 1.1") << QByteArray("TLSv1.1");
        QTest::newRow("TLS 1.0") << QByteArray("TLSv1");
    }

    void aProtocolOfOldDaysIsRefusedWhateverTheSystemAllows()
    {
        QFETCH(const QByteArray, protocol);
        const RawServer server(
            TestAuthority::ofOldDays(m_authority.server(kLoopback), protocol), answer::reply(200, "{}"));
        auto careless = std::async(std::launch::async, askCarelessly, server.url().toEncoded(), m_authority.file());
        QVERIFY(waitFor([&careless] { return careless.wait_for(0s) == std::future_status::ready; }));
        QCOMPARE(careless.get(), CURLE_OK);
        QCOMPARE(server.requests().size(), 1U);

        const auto reply = ask(aGet(server.url()), {.authorities = m_authority.file()});

        QCOMPARE(reply.error(),
            (Failure {Failure::Kind::unreachable, u"No secure connection to the server could be made."_s}));
        QCOMPARE(server.requests().size(), 1U);
    }

    void theEnvironmentAddsNobodyToThoseWhoAreTrusted_data()
    {
        QTest::addColumn<QByteArray>("name");
        QTest::addColumn<QByteArray>("value");
        const auto folder = m_folder.path();
        QVERIFY(QFile::copy(QFile::decodeName(m_authority.file()), folder + u"/authority.pem"_s));
        QCOMPARE(QProcess::execute(u"openssl"_s, {u"rehash"_s, folder}), 0);
        QCOMPARE(QDir(folder).entryList({u"????????.0"_s}).size(), 1);
        write(folder + u"/.curlrc"_s, "insecure\n");
        QTest::newRow("SSL_CERT_FILE") << QByteArray("SSL_CERT_FILE") << m_authority.file();
        QTest::newRow("SSL_CERT_DIR") << QByteArray("SSL_CERT_DIR") << QFile::encodeName(folder);
        QTest::newRow("CURL_CA_BUNDLE") << QByteArray("CURL_CA_BUNDLE") << m_authority.file();
        QTest::newRow("CURL_HOME") << QByteArray("CURL_HOME") << QFile::encodeName(folder);
        QTest::newRow("HOME") << QByteArray("HOME") << QFile::encodeName(folder);
        QTest::newRow("CURL_SSL_BACKEND") << QByteArray("CURL_SSL_BACKEND") << QByteArray("gnutls");
    }

    void theEnvironmentAddsNobodyToThoseWhoAreTrusted()
    {
        QFETCH(const QByteArray, name);
        QFETCH(const QByteArray, value);
        const RawServer server(m_authority.server(kLoopback), answer::reply(200));
        const Variable variable(name.constData(), value);

        const auto reply = ask(aGet(server.url()));

        QVERIFY(!reply);
        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, u"The server's certificate is not trusted."_s}));
        QVERIFY(server.requests().empty());
    }

    void theViewersOwnKeysForServersAreNotSent()
    {
        const QTemporaryDir home;
        write(home.filePath(u".netrc"_s), "machine 127.0.0.1 login anna password secret\n");
        const Variable variable("HOME", QFile::encodeName(home.path()));
        const RawServer server(answer::reply(401, {}, "www-authenticate: Basic realm=\"a\"\r\n"));

        QVERIFY(ask(aGet(server.url())));

        QCOMPARE(server.requests().size(), 1U);
        QCOMPARE(server.requests().at(0).headerNames(), QByteArrayList({"Host", "user-agent", "accept"}));
    }

private:
    TestAuthority m_authority;
    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(CurlTrustTest)

#include "CurlTrustTest.moc"
