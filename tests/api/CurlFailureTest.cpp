#include "api/CurlFailure.h"
#include "api/CurlTransport.h"
#include "support/RawAnswers.h"
#include "support/TestAuthority.h"
#include "support/TransportCall.h"

#include <QRegularExpression>
#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto kLoopback = "IP:127.0.0.1"_L1;

const auto kLost = u"The connection to the server was lost."_s;
const auto kNotSecure = u"No secure connection to the server could be made."_s;
const auto kNotUnderstood = u"The server's answer could not be understood."_s;

/// A name that no name service has to be asked for: it is longer than a name may be.
QString impossibleName()
{
    return (QString(60, u'a') + u'.').repeated(5) + u"invalid"_s;
}

QUrl withScheme(QUrl url, const QString& scheme)
{
    url.setScheme(scheme);
    return url;
}

} // namespace

Q_DECLARE_METATYPE(RawServer::Answer)

class CurlFailureTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everySentenceIsPlain()
    {
        const QRegularExpression sentence(u"^[A-Z][A-Za-z' ]+\\.$"_s);
        for (int code = 1; code < CURL_LAST; ++code) {
            for (long verification = 0; verification < 100; ++verification) {
                const auto failure = curlFailure(static_cast<CURLcode>(code), verification);
                QVERIFY2(sentence.match(failure.description).hasMatch(), qPrintable(failure.description));
                QVERIFY(!failure.isCancellation());
            }
        }
    }

    void aCertificateThatIsNotValidYetIsToldApart()
    {
        constexpr long kCertificateNotYetValid = 9;

        const auto failure = curlFailure(CURLE_PEER_FAILED_VERIFICATION, kCertificateNotYetValid);

        QCOMPARE(failure, (Failure {Failure::Kind::unreachable, u"The server's certificate is not valid yet."_s}));
    }

    void whatHasNoRowIsSaidInGeneral()
    {
        const auto failure = curlFailure(CURLE_OUT_OF_MEMORY, 0);

        QCOMPARE(failure, (Failure {Failure::Kind::unreachable, u"The request to the server did not succeed."_s}));
    }

    void aServerThatIsNotThereIsSaidSo()
    {
        QUrl url;
        {
            const RawServer gone(answer::silence());
            url = gone.url();
        }

        const auto reply = ask(aGet(url));

        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, u"The server could not be reached."_s}));
    }

    void aNameThatIsNotKnownIsSaidSo()
    {
        const auto reply = ask(aGet(QUrl(u"http://%1/"_s.arg(impossibleName()))));

        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, u"The server could not be found."_s}));
    }

    void aProxyThatIsNotKnownIsSaidSo()
    {
        qputenv("http_proxy", "http://" + impossibleName().toLatin1() + ':' + QByteArray::number(8080));

        const auto reply = ask(aGet(QUrl(u"http://service.invalid/"_s)));

        qunsetenv("http_proxy");
        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, u"The proxy could not be found."_s}));
    }

    void aProxyThatDoesNotConnectIsSaidSo()
    {
        const RawServer proxy(answer::reply(502));
        qputenv("https_proxy", proxy.url().toEncoded());

        const auto reply = ask(aGet(QUrl(u"https://service.invalid/"_s)));

        qunsetenv("https_proxy");
        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, u"The proxy did not connect to the server."_s}));
    }

    void aBrokenReplyIsSaidSo_data()
    {
        using Kind = Failure::Kind;
        QTest::addColumn<RawServer::Answer>("answer");
        QTest::addColumn<Kind>("kind");
        QTest::addColumn<QString>("sentence");
        const QByteArray head = "HTTP/1.1 200 OK\r\ncontent-length: 100\r\n\r\n";
        QTest::newRow("closed before it") << answer::bytesThenEnd({}) << Kind::unreachable << kLost;
        QTest::newRow("reset before it") << answer::bytesThenReset({}) << Kind::unreachable << kLost;
        QTest::newRow("shorter than declared") << answer::bytesThenEnd(head + "{") << Kind::unreachable << kLost;
        QTest::newRow("reset within it") << answer::bytesThenReset(head + "{") << Kind::unreachable << kLost;
        QTest::newRow("chunks without an end")
            << answer::bytesThenEnd("HTTP/1.1 200 OK\r\ntransfer-encoding: chunked\r\n\r\n2\r\n{}\r\n")
            << Kind::unreachable << kLost;
        QTest::newRow("half a head") << answer::bytesThenEnd("HTTP/1.1 200 OK\r\ncont") << Kind::unreachable << kLost;
        QTest::newRow("half a head after an interim reply")
            << answer::bytesThenEnd("HTTP/1.1 103 Hints\r\n\r\nHTTP/1.1 200 OK\r\ncont") << Kind::unreachable << kLost;
        QTest::newRow("an interim reply alone")
            << answer::bytesThenEnd("HTTP/1.1 100 Continue\r\n\r\n") << Kind::unreachable << kLost;
        QTest::newRow("another protocol")
            << answer::bytesThenEnd("SSH-2.0-OpenSSH_9.2\r\n") << Kind::badServerResponse << kNotUnderstood;
        QTest::newRow("a page without a head")
            << answer::bytesThenEnd("<html>Log in</html>") << Kind::badServerResponse << kNotUnderstood;
        QTest::newRow("bytes") << answer::bytesThenEnd(QByteArray("\x00\x01\xff\xfe\r\n\r\n", 8))
                               << Kind::badServerResponse << kNotUnderstood;
        QTest::newRow("a status that is none")
            << answer::bytesThenEnd("HTTP/1.1 abc OK\r\n\r\n") << Kind::badServerResponse << kNotUnderstood;
        QTest::newRow("an unknown version")
            << answer::bytesThenEnd("HTTP/7.1 200 OK\r\n\r\n") << Kind::badServerResponse << kNotUnderstood;
        QTest::newRow("a length below zero") << answer::bytesThenEnd("HTTP/1.1 200 OK\r\ncontent-length: -1\r\n\r\n")
                                             << Kind::badServerResponse << kNotUnderstood;
        QTest::newRow("a coding that does not exist")
            << answer::bytesThenEnd("HTTP/1.1 200 OK\r\ntransfer-encoding: sausage\r\n\r\n{}")
            << Kind::badServerResponse << kNotUnderstood;
    }

    void aBrokenReplyIsSaidSo()
    {
        QFETCH(const RawServer::Answer, answer);
        QFETCH(const Failure::Kind, kind);
        QFETCH(const QString, sentence);
        const RawServer server(answer);

        const auto reply = ask(aGet(server.url()));

        QVERIFY(!reply);
        QCOMPARE(reply.error(), (Failure {kind, sentence}));
    }

    void aConnectionResetBeforeTheRequestIsSaidSo()
    {
        RawServer server(answer::silence());
        server.onConnection([](RawConnection& connection) { connection.reset(); });

        QCOMPARE(ask(aPost(server.url())).error(), (Failure {Failure::Kind::unreachable, kLost}));
    }

    void aGoodCertificateIsAccepted()
    {
        const TestAuthority authority;
        const RawServer server(authority.server(kLoopback), answer::reply(200, "{}"));

        const auto reply = ask(aGet(server.url()), {.authorities = authority.file()});

        QVERIFY(reply);
        QCOMPARE(reply->body, "{}");
    }

    void aBadCertificateIsRefusedBeforeAnythingIsSent_data()
    {
        QTest::addColumn<QString>("fault");
        QTest::addColumn<QString>("sentence");
        QTest::newRow("expired") << u"expired"_s << u"The server's certificate has expired."_s;
        QTest::newRow("another host") << u"another host"_s << u"The server's certificate belongs to another server."_s;
        QTest::newRow("self-signed") << u"self-signed"_s << u"The server's certificate is not trusted."_s;
        QTest::newRow("unknown issuer") << u"unknown issuer"_s << u"The server's certificate is not trusted."_s;
    }

    void aBadCertificateIsRefusedBeforeAnythingIsSent()
    {
        QFETCH(const QString, fault);
        QFETCH(const QString, sentence);
        const TestAuthority authority;
        const TestAuthority stranger;
        const auto tls = fault == u"expired" ? authority.server(kLoopback, -1)
            : fault == u"another host"       ? authority.server(u"DNS:other.invalid"_s)
            : fault == u"self-signed"        ? authority.selfSignedServer(kLoopback)
                                             : stranger.server(kLoopback);
        const RawServer server(tls, answer::reply(200));

        const auto reply = ask(aGet(server.url()), {.authorities = authority.file()});

        QVERIFY(!reply);
        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, sentence}));
        QVERIFY(server.requests().empty());
    }

    void theSystemsAuthoritiesAreTheOnesTrustedUnlessOthersAreGiven()
    {
        const TestAuthority authority;
        const RawServer server(authority.server(kLoopback), answer::reply(200));

        const auto reply = ask(aGet(server.url()));

        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, u"The server's certificate is not trusted."_s}));
        QVERIFY(server.requests().empty());
    }

    void aMissingListOfAuthoritiesIsSaidSo()
    {
        const TestAuthority authority;
        const RawServer server(authority.server(kLoopback), answer::reply(200));

        const auto reply = ask(aGet(server.url()), {.authorities = "/nowhere/at-all.pem"});

        QCOMPARE(reply.error(),
            (Failure {
                Failure::Kind::unreachable, u"The computer's list of trusted certificates could not be read."_s}));
    }

    void aServerThatDoesNotSpeakTlsIsSaidSo_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("plain text") << QByteArray("HTTP/1.1 400 Bad Request\r\n\r\n");
        // The record of an alert: fatal, protocol version.
        QTest::newRow("no common version") << QByteArray::fromHex("15030100020246");
        // A ServerHello of TLS 1.1: record, handshake type and length, version, random, no session, a cipher.
        QTest::newRow("an old version") << QByteArray::fromHex("160302002a020000260302") + QByteArray(32, 'r')
                + QByteArray::fromHex("00c01300");
        QTest::newRow("nothing") << QByteArray();
    }

    void aServerThatDoesNotSpeakTlsIsSaidSo()
    {
        QFETCH(const QByteArray, bytes);
        RawServer server(answer::silence());
        server.onConnection([bytes](RawConnection& connection) {
            connection.send(bytes);
            connection.finish();
        });

        const auto reply = ask(aGet(withScheme(server.url(), u"https"_s)));

        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, kNotSecure}));
    }

    void aSecureConnectionThatBreaksIsSaidSo()
    {
        const TestAuthority authority;
        const RawServer server(
            authority.server(kLoopback), answer::bytesThenReset("HTTP/1.1 200 OK\r\ncontent-length: 100\r\n\r\n{"));

        const auto reply = ask(aGet(server.url()), {.authorities = authority.file()});

        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, kLost}));
    }

    void aSecureConnectionThatBreaksWhileItIsWrittenToDoesNotEndTheProgram()
    {
        const TestAuthority authority;
        RawServer server(authority.server(kLoopback), answer::silence());
        server.onConnection([](RawConnection& connection) { connection.reset(); });

        const auto reply = ask(aPost(server.url(), QByteArray(8'000'000, 'x')), {.authorities = authority.file()});

        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, kLost}));
    }
};

QTEST_GUILESS_MAIN(CurlFailureTest)

#include "CurlFailureTest.moc"
