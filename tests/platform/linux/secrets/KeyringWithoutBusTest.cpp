#include "platform/linux/secrets/AwaitedKeyring.h"
#include "support/FakeClock.h"
#include "support/FakeSecretService.h"
#include "support/Outcome.h"

#include <QProcess>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kService = u"orvella.device-token"_s;
const auto kAccount = u"default"_s;

} // namespace

/// The store where there is no session bus, or no more.
class KeyringWithoutBusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutABusThereIsNoItem_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("no address") << QString();
        QTest::newRow("an address that leads nowhere") << u"unix:path=/nonexistent/bus"_s;
        QTest::newRow("an address that is none") << u"nonsense"_s;
    }

    void withoutABusThereIsNoItem()
    {
        QFETCH(const QString, address);
        KeyringSecretStore store(clock, QDBusConnection::connectToBus(address, address));

        const Outcome adding(store.addItem(kService, kAccount, Secret("token-1")));
        QTRY_VERIFY(adding.isThere());
        const Outcome reading(store.readItem(kService, kAccount, {}));
        QTRY_VERIFY(reading.isThere());
        const Outcome removing(store.removeItem(kService, kAccount));
        QTRY_VERIFY(removing.isThere());

        QCOMPARE((*adding).trouble(), KeyringTrouble::absent);
        QCOMPARE((*reading).trouble(), KeyringTrouble::absent);
        QCOMPARE((*removing).trouble(), KeyringTrouble::absent);
    }

    void withoutABusAKnownItemIsAbsentAfterTheWait()
    {
        FakeClock virtualClock;
        KeyringSecretStore store(virtualClock, QDBusConnection(u"never made"_s));
        AwaitedKeyring keyring(virtualClock, store);
        const Outcome reading(keyring.readItem(kService, kAccount, {}));
        QTRY_COMPARE(virtualClock.sleepers(), 2U);
        QTRY_COMPARE(virtualClock.nextPause(), AwaitedKeyring::kLimit);

        virtualClock.advance(AwaitedKeyring::kLimit);

        QVERIFY(reading.isThere());
        QCOMPARE((*reading).trouble(), KeyringTrouble::absent);
    }

    void aBusThatGoesAwayEndsWhatWaitsAndNotTheProgram()
    {
        QProcess bus;
        bus.start(u"dbus-daemon"_s,
            {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + QStringLiteral(ORVELLA_BUS_CONFIGURATION)});
        QVERIFY(bus.waitForStarted());
        QVERIFY(bus.waitForReadyRead());
        // Read by the D-Bus library once for all, which is why no other test here uses it.
        qputenv("DBUS_SESSION_BUS_ADDRESS", bus.readLine().trimmed());
        FakeSecretService service;
        service.put(kService, "token-1");
        service.isLocked = true;
        service.start();
        KeyringSecretStore store(clock);
        const Outcome reading(store.readItem(kService, kAccount, {}));
        QTRY_COMPARE(service.prompts(), 1);

        bus.kill();
        QVERIFY(bus.waitForFinished());

        QTRY_VERIFY_WITH_TIMEOUT(reading.isThere(), 20000);
        QCOMPARE((*reading).trouble(), KeyringTrouble::absent);
        const Outcome later(store.readItem(kService, kAccount, {}));
        QTRY_VERIFY(later.isThere());
        QCOMPARE((*later).trouble(), KeyringTrouble::absent);
    }

private:
    SystemClock clock;
};

QTEST_GUILESS_MAIN(KeyringWithoutBusTest)

#include "KeyringWithoutBusTest.moc"
