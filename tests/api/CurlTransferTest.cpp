#include "api/CurlTransport.h"
#include "base/Version.h"
#include "support/RawAnswers.h"
#include "support/TransportCall.h"
#include "support/Variable.h"

#include <QTest>

#include <algorithm>

using namespace orvella;
using namespace Qt::StringLiterals;

Q_DECLARE_METATYPE(RawServer::Answer)

class CurlTransferTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void headerNamesGoOutInLowerCaseAndNothingIsAddedUnasked()
    {
        const RawServer server(answer::reply(200));
        auto request = aPost(server.url(u"/api/mac/ads/click"_s), QByteArray(1'500'000, 'x'));
        request.headers.emplace_back("authorization", "Bearer abc");

        QVERIFY(ask(request));

        const auto& sent = server.requests().at(0);
        QCOMPARE(sent.firstLine(), "POST /api/mac/ads/click HTTP/1.1");
        auto names = sent.headerNames();
        std::ranges::sort(names);
        // libcurl leaves no choice for this one.
        QCOMPARE(names.takeFirst(), "Host");
        QCOMPARE(names, QByteArrayList({"accept", "authorization", "content-length", "content-type", "user-agent"}));
        QCOMPARE(sent.header("authorization"), "Bearer abc");
        QCOMPARE(sent.header("content-type"), "application/json");
        QCOMPARE(sent.header("content-length"), "1500000");
        QCOMPARE(sent.header("accept"), "*/*");
        QCOMPARE(sent.header("user-agent"), "Orvella/" + QByteArray(kVersion.data()));
        QCOMPARE(sent.body, request.body);
    }

    void aGetHasNoBodyAndSaysNothingAboutOne()
    {
        const RawServer server(answer::reply(200));

        QVERIFY(ask(aGet(server.url(u"/api/mac/wallet"_s))));

        const auto& sent = server.requests().at(0);
        QCOMPARE(sent.firstLine(), "GET /api/mac/wallet HTTP/1.1");
        QCOMPARE(sent.headerNames(), QByteArrayList({"Host", "user-agent", "accept"}));
        QVERIFY(sent.body.isEmpty());
    }

    void anEmptyBodyAndAnEmptyHeaderAreSent()
    {
        const RawServer server(answer::reply(200));
        auto request = aPost(server.url(), {});
        request.headers.emplace_back("x-empty", "");

        QVERIFY(ask(request));

        QCOMPARE(server.requests().at(0).header("content-length"), "0");
        QVERIFY(server.requests().at(0).headerNames().contains("x-empty"));
    }

    void aBodyGoesOutByteForByte()
    {
        const RawServer server(answer::reply(200));
        const auto body = QByteArray("{\"a\":\"\0\xff\r\n\"}", 13);

        QVERIFY(ask(aPost(server.url(), body)));

        QCOMPARE(server.requests().at(0).body, body);
    }

    void anAddressGoesOutAsItIs()
    {
        const RawServer server(answer::reply(200));
        auto url = server.url(u"/a/../b//c d"_s);
        url.setQuery(u"q=%2Fä"_s);
        url.setFragment(u"part"_s);

        QVERIFY(ask(aGet(url)));

        QCOMPARE(server.requests().at(0).firstLine(), "GET /a/../b//c%20d?q=%2F%C3%A4 HTTP/1.1");
    }

    void aHeaderCannotSmuggleInAnother_data()
    {
        QTest::addColumn<QByteArray>("value");
        QTest::newRow("line feed") << QByteArray("Bearer a\nx-more: b");
        QTest::newRow("carriage return") << QByteArray("Bearer a\rx-more: b");
        QTest::newRow("zero") << QByteArray("Bearer a\0b", 10);
    }

    void aHeaderCannotSmuggleInAnother()
    {
        QFETCH(const QByteArray, value);
        const RawServer server(answer::reply(200));
        auto request = aGet(server.url());
        request.headers.emplace_back("authorization", value);

        const auto reply = ask(request);

        QCOMPARE(reply.error().kind, Failure::Kind::unencodable);
        QCOMPARE(reply.error().description, u"The request could not be written."_s);
        QCOMPARE(server.connections(), 0U);
    }

    void onlyHttpAndHttpsAreSpoken_data()
    {
        QTest::addColumn<QString>("scheme");
        QTest::newRow("ftp") << u"ftp"_s;
        QTest::newRow("file") << u"file"_s;
        QTest::newRow("gopher") << u"gopher"_s;
        QTest::newRow("none") << QString();
    }

    void onlyHttpAndHttpsAreSpoken()
    {
        QFETCH(const QString, scheme);
        const RawServer server(answer::reply(200));
        auto url = server.url(u"/etc/hostname"_s);
        url.setScheme(scheme);

        const auto reply = ask(aGet(url));

        QCOMPARE(reply.error().kind, Failure::Kind::unreachable);
        QCOMPARE(reply.error().description, u"The server's address is not valid."_s);
        QCOMPARE(server.connections(), 0U);
    }

    void aRedirectIsDeliveredAndNotFollowed_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {300, 301, 302, 303, 304, 307, 308})
            QTest::addRow("%d", status) << status;
    }

    void aRedirectIsDeliveredAndNotFollowed()
    {
        QFETCH(const int, status);
        const RawServer other(answer::reply(200));
        const RawServer elsewhere(answer::reply(status, {}, "location: " + other.url().toEncoded() + "\r\n"));
        const RawServer within(answer::reply(status, {}, "location: /again\r\n"));

        const auto away = ask(aGet(elsewhere.url()));
        const auto again = ask(aPost(within.url()));

        QCOMPARE(away->status, status);
        QCOMPARE(again->status, status);
        QTest::qWait(20);
        QCOMPARE(other.connections(), 0U);
        QCOMPARE(within.connections(), 1U);
    }

    void aPostIsSentOnceHoweverItsConnectionEnds_data()
    {
        QTest::addColumn<RawServer::Answer>("answer");
        QTest::newRow("closed before the reply") << answer::bytesThenEnd({});
        QTest::newRow("reset before the reply") << answer::bytesThenReset({});
        QTest::newRow("closed within the head") << answer::bytesThenEnd("HTTP/1.1 200 OK\r\ncontent-");
        QTest::newRow("reset within the head") << answer::bytesThenReset("HTTP/1.1 200 OK\r\ncontent-");
        QTest::newRow("closed within the body")
            << answer::bytesThenEnd("HTTP/1.1 200 OK\r\ncontent-length: 9\r\n\r\n{");
        QTest::newRow("reset within the body")
            << answer::bytesThenReset("HTTP/1.1 200 OK\r\ncontent-length: 9\r\n\r\n{");
        QTest::newRow("expectation failed") << answer::reply(417);
        QTest::newRow("request timeout") << answer::reply(408, {}, "connection: close\r\n");
        QTest::newRow("misdirected") << answer::reply(421);
        QTest::newRow("unauthorized") << answer::reply(401, {}, "www-authenticate: Basic realm=\"a\"\r\n");
    }

    void aPostIsSentOnceHoweverItsConnectionEnds()
    {
        QFETCH(const RawServer::Answer, answer);
        const RawServer server(answer);
        CurlTransport transport;
        // A first one that succeeds would leave a connection to use again, if connections were kept.
        const RawServer friendly(answer::bytesThenSilence(answer::http(200, "{}")));
        TransportCall first(transport, aPost(friendly.url()));
        QVERIFY(first.wait());

        TransportCall call(transport, aPost(server.url()));
        static_cast<void>(call.wait());

        QTest::qWait(100);
        QCOMPARE(server.connections(), 1U);
        QCOMPARE(server.requests().size(), 1U);
    }

    void aPostIsSentOnceToAServerThatClosesAKeptConnection()
    {
        // The first request is answered and the connection kept; whatever comes next on any connection is cut.
        int seen = 0;
        const RawServer server([&seen](RawConnection& connection, const RawRequest&) {
            if (++seen == 1)
                connection.send(answer::http(200, "{}"));
            else
                connection.reset();
        });
        CurlTransport transport;
        TransportCall first(transport, aPost(server.url()));
        QVERIFY(first.wait());

        TransportCall second(transport, aPost(server.url()));

        QVERIFY(!second.wait());
        QTest::qWait(100);
        QCOMPARE(seen, 2);
        QCOMPARE(server.connections(), 2U);
    }

    void aCookieIsNotKept()
    {
        const RawServer server(answer::reply(200, {}, "set-cookie: a=b; path=/\r\n"));
        CurlTransport transport;
        for (int i = 0; i < 2; ++i) {
            TransportCall call(transport, aGet(server.url()));
            QVERIFY(call.wait());
        }

        QCOMPARE(server.requests().size(), 2U);
        QCOMPARE(server.requests().at(1).headerNames(), QByteArrayList({"Host", "user-agent", "accept"}));
    }

    void interimRepliesAreSkipped()
    {
        const RawServer server(answer::bytesThenEnd("HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 102 Processing\r\n\r\n"
                                                    "HTTP/1.1 103 Early Hints\r\nlink: </a>\r\n\r\n"
            + answer::http(200, "{}")));

        const auto reply = ask(aPost(server.url()));

        QCOMPARE(reply->status, 200);
        QCOMPARE(reply->body, "{}");
    }

    void everyFinalStatusIsDelivered_data()
    {
        QTest::addColumn<int>("status");
        for (const int status : {199 + 1, 204, 206, 299, 300, 400, 401, 403, 404, 429, 500, 503, 599})
            QTest::addRow("%d", status) << status;
    }

    void everyFinalStatusIsDelivered()
    {
        QFETCH(const int, status);
        const RawServer server(answer::reply(status, status == 204 ? "" : "why"));

        const auto reply = ask(aGet(server.url()));

        QCOMPARE(reply->status, status);
        QCOMPARE(reply->body, status == 204 ? "" : "why");
    }

    void theProxyOfTheEnvironmentIsUsed()
    {
        const RawServer proxy(answer::reply(200, "from the proxy"));
        const Variable variable("http_proxy", proxy.url().toEncoded());

        const auto reply = ask(aGet(QUrl(u"http://service.invalid/api"_s)));

        QCOMPARE(reply->body, "from the proxy");
        QCOMPARE(proxy.requests().at(0).firstLine(), "GET http://service.invalid/api HTTP/1.1");
    }

    void anExceptionFromTheProxyIsHonoured()
    {
        const RawServer proxy(answer::reply(200, "from the proxy"));
        const RawServer server(answer::reply(200, "direct"));
        const Variable variable("http_proxy", proxy.url().toEncoded());
        const Variable exception("no_proxy", "0.0.0.0");
        auto likeAnotherComputer = server.url();
        likeAnotherComputer.setHost(u"0.0.0.0"_s);

        QCOMPARE(ask(aGet(likeAnotherComputer))->body, "direct");
        QCOMPARE(proxy.connections(), 0U);
    }

    void thisComputerIsReachedWithoutTheProxyOfTheEnvironment_data()
    {
        QTest::addColumn<QString>("host");
        QTest::newRow("address") << u"127.0.0.1"_s;
        QTest::newRow("another address") << u"127.9.9.9"_s;
        QTest::newRow("name") << u"localhost"_s;
        QTest::newRow("longer name") << u"service.localhost"_s;
    }

    void thisComputerIsReachedWithoutTheProxyOfTheEnvironment()
    {
        QFETCH(const QString, host);
        const RawServer proxy(answer::reply(200, "from the proxy"));
        const RawServer server(answer::reply(200, "direct"));
        const Variable variable("http_proxy", proxy.url().toEncoded());
        const Variable every("all_proxy", proxy.url().toEncoded());
        auto address = server.url();
        address.setHost(host);

        static_cast<void>(ask(aGet(address)));

        QCOMPARE(proxy.connections(), 0U);
    }

    void aProxyDoesNotSeeTheTokenOfASecureRequest()
    {
        const RawServer proxy(answer::reply(502));
        const Variable variable("https_proxy", proxy.url().toEncoded());
        auto request = aGet(QUrl(u"https://service.invalid/api"_s));
        request.headers.emplace_back("authorization", "Bearer abc");

        QVERIFY(!ask(request));

        QCOMPARE(proxy.requests().at(0).firstLine(), "CONNECT service.invalid:443 HTTP/1.1");
        QVERIFY(!proxy.requests().at(0).head.contains("abc"));
    }
};

QTEST_GUILESS_MAIN(CurlTransferTest)

#include "CurlTransferTest.moc"
