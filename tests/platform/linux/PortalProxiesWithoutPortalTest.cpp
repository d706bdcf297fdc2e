#include "platform/linux/PortalProxies.h"

#include "support/PrivateBus.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

const QUrl kService(u"https://service.invalid/"_s);

// Longer than any test runs.
constexpr auto kForever = 10min;

} // namespace

class PortalProxiesWithoutPortalTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutAPortalItSaysNothingAtOnce()
    {
        const PortalProxies proxies(QDBusConnection::sessionBus(), kForever);

        QCOMPARE(proxies.wantedFor(kService, {}), std::nullopt);
        QCOMPARE(proxies.wantedFor(kService), std::nullopt);
    }

    void withoutASessionBusItSaysNothingAtOnce()
    {
        const PortalProxies proxies(QDBusConnection(u"nowhere"_s), kForever);

        QCOMPARE(proxies.wantedFor(kService, {}), std::nullopt);
        QCOMPARE(proxies.wantedFor(kService), std::nullopt);
    }

    void aPortalThatDoesNotRunIsNotStarted()
    {
        const QTemporaryDir folder;
        const auto mark = folder.filePath(u"started"_s);
        PrivateBus bus;
        bus.addService(u"org.freedesktop.portal.Desktop"_s, u"/usr/bin/touch "_s + mark);
        const auto connection = QDBusConnection::connectToBus(bus.address(), u"other"_s);
        QVERIFY(connection.isConnected());
        {
            const PortalProxies proxies(connection, kForever);
            QCOMPARE(proxies.wantedFor(kService, {}), std::nullopt);
            QCOMPARE(proxies.wantedFor(kService), std::nullopt);
            QTest::qWait(100);
            QVERIFY(!QFile::exists(mark));
        }
        QDBusConnection::disconnectFromBus(u"other"_s);
    }
};

QTEST_GUILESS_MAIN(PortalProxiesWithoutPortalTest)

#include "PortalProxiesWithoutPortalTest.moc"
