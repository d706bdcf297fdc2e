#include "api/ClientWorld.h"
#include "api/Endpoints.h"
#include "support/Dies.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// Where the requests go to.
class ServiceSettingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void withoutASettingTheProductionServiceIsUsed()
    {
        ClientWorld world;

        const auto client = world.client();

        QCOMPARE(client.baseURL(), QUrl(QStringLiteral(ORVELLA_SERVICE_URL)));
        QCOMPARE(client.baseURL().scheme(), u"https"_s);
        QVERIFY(client.baseURL().path().isEmpty());
    }

    void theSettingSendsEveryRequestElsewhere()
    {
        ClientWorld world;
        world.useService(u"http://127.0.0.1:8787"_s);
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QVERIFY(answer);
        QCOMPARE(world.transport.requests().front().http.url, QUrl(u"http://127.0.0.1:8787/api/mac/wallet"_s));
    }

    void aServiceAddressThatIsNoneStopsTheProgram_data()
    {
        QTest::addColumn<QString>("address");
        for (const auto* const address : {"", "service", "mailto:x@y.test", "ftp://a.test", "https://", "https://a b"})
            QTest::addRow("%s", address) << QString::fromLatin1(address);
    }

    void aServiceAddressThatIsNoneStopsTheProgram()
    {
        QFETCH(QString, address);

        QVERIFY(dies([&] {
            ClientWorld world;
            world.useService(address);
            static_cast<void>(world.client());
        }));
    }

    void plainHttpIsForThisComputerOnly_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("isTaken");
        const auto row = [](const char* address, bool isTaken) {
            QTest::newRow(address) << QString::fromLatin1(address) << isTaken;
        };
        row("http://localhost", true);
        row("HTTP://LOCALHOST:8787/", true);
        row("http://orvella.localhost:8787", true);
        row("http://127.0.0.1:8787", true);
        row("http://127.255.255.254", true);
        row("http://127.1", true);
        row("http://[::1]:8787", true);
        row("https://service.test", true);
        row("https://10.0.0.1", true);
        row("http://service.test", false);
        row("HTTP://service.test", false);
        row("http://10.0.0.1", false);
        row("http://128.0.0.1", false);
        row("http://127.999.0.1", false);
        row("http://127.256.1.1", false);
        row("http://127.0.0.99999999999", false);
        row("http://0.0.0.0", false);
        row("http://[::]", false);
        row("http://[::2]", false);
        row("http://localhost.", false);
        row("http://localhost.test", false);
        row("http://notlocalhost", false);
        row("http://127.0.0.1.test", false);
        row("http://127.0.0.1@service.test", false);
        row("http://service.test#@127.0.0.1", false);
        row("http://service.test?127.0.0.1", false);
        row("http://service.test/127.0.0.1", false);
    }

    void plainHttpIsForThisComputerOnly()
    {
        QFETCH(const QString, address);
        QFETCH(const bool, isTaken);
        const auto use = [&] {
            ClientWorld world;
            world.useService(address);
            static_cast<void>(world.client());
        };

        if (isTaken)
            use();
        else
            QVERIFY(dies(use));
    }

    void aSettingThatIsNoTextCountsAsUnset()
    {
        ClientWorld world;
        world.platform.settings.values.insert_or_assign(u"apiBaseURL"_s, Json(qint64 {5}));

        QCOMPARE(world.client().baseURL().scheme(), u"https"_s);
    }

    void pathsResolveRelativeToTheBase_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");

        QTest::newRow("leading slash") << u"https://a.test"_s << u"/api/mac/wallet"_s
                                       << u"https://a.test/api/mac/wallet"_s;
        QTest::newRow("no leading slash")
            << u"https://a.test"_s << u"api/mac/wallet"_s << u"https://a.test/api/mac/wallet"_s;
        QTest::newRow("base with a slash")
            << u"https://a.test/"_s << u"/api/mac/wallet"_s << u"https://a.test/api/mac/wallet"_s;
        QTest::newRow("prefix with a slash is kept")
            << u"https://a.test/x/y/"_s << u"/api/mac/wallet"_s << u"https://a.test/x/y/api/mac/wallet"_s;
        QTest::newRow("prefix without a slash loses its last segment")
            << u"https://a.test/x/y"_s << u"/api/mac/wallet"_s << u"https://a.test/x/api/mac/wallet"_s;
        QTest::newRow("two slashes resolve from the root")
            << u"https://a.test/x/y/"_s << u"//api/mac/wallet"_s << u"https://a.test/api/mac/wallet"_s;
    }

    void pathsResolveRelativeToTheBase()
    {
        QFETCH(QString, base);
        QFETCH(QString, path);
        QFETCH(QString, expected);
        ClientWorld world;
        world.useService(base);
        auto client = world.client();

        static_cast<void>(ClientWorld::answered(client.get<WalletResponse>(path, {})));

        QCOMPARE(world.transport.requests().front().http.url.toString(), expected);
    }
};

QTEST_GUILESS_MAIN(ServiceSettingTest)

#include "ServiceSettingTest.moc"
