#include "api/DesktopProxy.h"

#include "api/CurlTransport.h"
#include "support/FakePlatform.h"
#include "support/RawAnswers.h"
#include "support/TransportCall.h"
#include "support/Variable.h"

#include <QTest>
#include <QThreadPool>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const QUrl kService(u"http://service.invalid/api"_s);

/// To connect there is to connect to the loopback, but it is not an address of it.
QUrl likeAnotherComputer(QUrl address)
{
    address.setHost(u"0.0.0.0"_s);
    return address;
}

} // namespace

class DesktopProxyTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void theDesktopsWishIsTaken()
    {
        FakeProxies proxies;
        QCOMPARE(desktopProxy(kService, proxies, {}), std::nullopt);

        proxies.wanted = QUrl(u"http://proxy.invalid:3128"_s);

        QCOMPARE(desktopProxy(kService, proxies, {}), proxies.wanted);
        QCOMPARE(proxies.questions(), (std::vector {kService, kService}));
    }

    void theEnvironmentGoesFirst_data()
    {
        QTest::addColumn<QByteArray>("variable");
        QTest::addColumn<QString>("scheme");
        QTest::addColumn<bool>("isAsked");
        const auto row = [](const char* variable, const char* scheme, bool isAsked) {
            QTest::addRow("%s for %s", variable, scheme)
                << QByteArray(variable) << QString::fromLatin1(scheme) << isAsked;
        };
        row("http_proxy", "http", false);
        row("http_proxy", "https", true);
        row("HTTP_PROXY", "http", true);
        row("https_proxy", "http", true);
        row("https_proxy", "https", false);
        row("HTTPS_PROXY", "http", true);
        row("HTTPS_PROXY", "https", false);
        row("all_proxy", "http", false);
        row("all_proxy", "https", false);
        row("ALL_PROXY", "http", false);
        row("ALL_PROXY", "https", false);
        row("no_proxy", "http", true);
        row("no_proxy", "https", true);
    }

    void theEnvironmentGoesFirst()
    {
        QFETCH(const QByteArray, variable);
        QFETCH(const QString, scheme);
        QFETCH(const bool, isAsked);
        FakeProxies proxies;
        const Variable set(variable.constData(), "proxy.invalid");
        auto address = kService;
        address.setScheme(scheme);

        static_cast<void>(desktopProxy(address, proxies, {}));

        QCOMPARE(!proxies.questions().empty(), isAsked);
    }

    void nobodyIsAskedAboutThisComputer_data()
    {
        QTest::addColumn<QString>("host");
        QTest::addColumn<bool>("isAsked");
        const auto row = [](const char* host, bool isAsked) {
            QTest::newRow(host) << QString::fromLatin1(host) << isAsked;
        };
        row("localhost", false);
        row("LOCALHOST", false);
        row("a.b.localhost", false);
        row("127.0.0.1", false);
        row("127.255.0.9", false);
        row("127.1", false);
        row("127.0.0.01", false);
        row("[::1]", false);
        row("[0:0::0:1]", false);
        row("[::ffff:127.0.0.1]", false);
        row("[::ffff:7f00:1]", false);
        row("localhost.", true);
        row("localhost.invalid", true);
        row("mylocalhost", true);
        row("127.0.0.1.invalid", true);
        row("128.0.0.1", true);
        row("10.127.0.0", true);
        row("[::2]", true);
        row("[fe80::1]", true);
    }

    void nobodyIsAskedAboutThisComputer()
    {
        QFETCH(const QString, host);
        QFETCH(const bool, isAsked);
        const FakeProxies proxies;
        const QUrl address(u"https://%1:8443/"_s.arg(host));
        QVERIFY(address.isValid());

        static_cast<void>(desktopProxy(address, proxies, {}));

        QCOMPARE(!proxies.questions().empty(), isAsked);
    }

    void aRequestGoesThroughTheDesktopsProxy()
    {
        const RawServer proxy(answer::reply(200, "from the proxy"));
        FakeProxies proxies;
        proxies.wanted = proxy.url();
        proxies.wanted->setUserInfo(u"anna:a%40b"_s);

        const auto reply = ask(aGet(kService), {.proxies = proxies});

        QVERIFY(reply);
        QCOMPARE(reply->body, "from the proxy");
        QCOMPARE(proxy.requests().at(0).firstLine(), "GET http://service.invalid/api HTTP/1.1");
        QCOMPARE(proxy.requests().at(0).header("Proxy-Authorization"), "Basic " + QByteArray("anna:a@b").toBase64());
    }

    void theDesktopsProxyDoesNotSeeTheTokenOfASecureRequest()
    {
        const RawServer proxy(answer::reply(502));
        FakeProxies proxies;
        proxies.wanted = proxy.url();
        auto request = aGet(QUrl(u"https://service.invalid/api"_s));
        request.headers.emplace_back("authorization", "Bearer abc");

        const auto reply = ask(request, {.proxies = proxies});

        QCOMPARE(reply.error(), (Failure {Failure::Kind::unreachable, u"The proxy did not connect to the server."_s}));
        QCOMPARE(proxy.requests().at(0).firstLine(), "CONNECT service.invalid:443 HTTP/1.1");
        QVERIFY(!proxy.requests().at(0).head.contains("abc"));
    }

    void eachRequestAsksAfresh()
    {
        const RawServer first(answer::reply(200, "first"));
        const RawServer second(answer::reply(200, "second"));
        FakeProxies proxies;
        CurlTransport transport({.proxies = proxies});

        proxies.wanted = first.url();
        QCOMPARE(TransportCall(transport, aGet(kService)).wait()->body, "first");
        QVERIFY(QThreadPool::globalInstance()->waitForDone(5000));
        proxies.wanted = second.url();
        QCOMPARE(TransportCall(transport, aGet(kService)).wait()->body, "second");
    }

    void theProxyOfTheEnvironmentIsUsedBeforeTheDesktops()
    {
        const RawServer ofTheEnvironment(answer::reply(200, "environment"));
        const RawServer ofTheDesktop(answer::reply(200, "desktop"));
        const Variable variable("http_proxy", ofTheEnvironment.url().toEncoded());
        FakeProxies proxies;
        proxies.wanted = ofTheDesktop.url();

        QCOMPARE(ask(aGet(kService), {.proxies = proxies})->body, "environment");
        QCOMPARE(ofTheDesktop.connections(), 0U);
    }

    void anExceptionOfTheEnvironmentCountsForTheDesktopsProxy()
    {
        const RawServer proxy(answer::reply(200, "from the proxy"));
        const RawServer server(answer::reply(200, "direct"));
        const auto address = likeAnotherComputer(server.url());
        const Variable exception("no_proxy", address.host().toLatin1());
        FakeProxies proxies;
        proxies.wanted = proxy.url();

        QCOMPARE(ask(aGet(address), {.proxies = proxies})->body, "direct");
        QCOMPARE(proxies.questions(), std::vector {address});
        QCOMPARE(proxy.connections(), 0U);
    }

    void thisComputerIsReachedWithoutTheDesktopsProxy()
    {
        const RawServer proxy(answer::reply(200, "from the proxy"));
        const RawServer server(answer::reply(200, "direct"));
        FakeProxies proxies;
        proxies.wanted = proxy.url();

        QCOMPARE(ask(aGet(server.url()), {.proxies = proxies})->body, "direct");
        QCOMPARE(proxy.connections(), 0U);
    }

    void aDirectConnectionIsOne()
    {
        const RawServer server(answer::reply(200, "direct"));
        FakeProxies proxies;
        proxies.wanted = QUrl();
        const auto address = likeAnotherComputer(server.url());

        QCOMPARE(ask(aGet(address), {.proxies = proxies})->body, "direct");
        QCOMPARE(proxies.questions(), std::vector {address});
    }

    void theEndOfTheTransportDoesNotWaitForTheDesktop()
    {
        FakeProxies proxies;
        proxies.isSilent = true;
        auto transport = std::make_unique<CurlTransport>(CurlOptions {.proxies = proxies});
        TransportCall call(*transport, aGet(kService));
        QTRY_COMPARE(proxies.questions().size(), 1U);

        transport.reset();

        QVERIFY(call.exchange().reply()->error().isCancellation());
    }

    void aStoppedCallDoesNotWaitForTheDesktop()
    {
        FakeProxies proxies;
        proxies.isSilent = true;
        CurlTransport transport({.proxies = proxies});
        TransportCall call(transport, aGet(kService));
        QTRY_COMPARE(proxies.questions().size(), 1U);

        call.stop();

        QVERIFY(call.isOver());
        QVERIFY(QThreadPool::globalInstance()->waitForDone(5000));
        QCOMPARE(call.exchange().receipts(), 0);
    }
};

QTEST_GUILESS_MAIN(DesktopProxyTest)

#include "DesktopProxyTest.moc"
