#include "platform/linux/AwaitedKeyring.h"
#include "support/FakeClock.h"
#include "support/FakeSecretService.h"
#include "support/Outcome.h"

#include <QProcess>
#include <QTemporaryDir>
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
    void init()
    {
        // Where a bus would be looked for without an address.
        QVERIFY(runtime.isValid());
        qputenv("XDG_RUNTIME_DIR", QFile::encodeName(runtime.path()));
        qunsetenv("DISPLAY");
        qunsetenv("DBUS_SESSION_BUS_ADDRESS");
    }

    void withoutABusThereIsNoItem_data()
    {
        QTest::addColumn<QByteArray>("address");
        QTest::newRow("no address") << QByteArray();
        QTest::newRow("an address that leads nowhere") << QByteArray("unix:path=/nonexistent/bus");
        QTest::newRow("an address that is none") << QByteArray("nonsense");
    }

    void withoutABusThereIsNoItem()
    {
        QFETCH(const QByteArray, address);
        if (!address.isEmpty())
            qputenv("DBUS_SESSION_BUS_ADDRESS", address);
        KeyringSecretStore store(clock);

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
        KeyringSecretStore store(virtualClock);
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
    QTemporaryDir runtime;
    SystemClock clock;
};

QTEST_GUILESS_MAIN(KeyringWithoutBusTest)

#include "KeyringWithoutBusTest.moc"
