#include "api/Endpoints.h"
#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppState> state;
    /// Since the end began.
    int changes = 0;

    World() { transport.answerEverything(); }

    void start()
    {
        state = std::make_unique<AppState>(platform.lend(), transport);
        state->bootstrap();
        settle();
    }

    void end()
    {
        QObject::connect(state.get(), &Observable::willChange, QCoreApplication::instance(), [this] { ++changes; });
        transport.forgetRequests();
        platform.secrets.operations.clear();
        state.reset();
        settle();
    }
};

} // namespace

/// The state goes away while one of its flows waits: nothing comes of it, neither then nor when what it waited for
/// comes after all.
class StoppedFlowsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void nothingComesOfACallThatWasStopped_data()
    {
        QTest::addColumn<bool>("isRegistered");
        QTest::addColumn<QString>("path");

        QTest::newRow("registering") << false << QString(endpoints::kRegister);
        QTest::newRow("the wallet") << true << QString(endpoints::kWallet);
        QTest::newRow("the first heartbeat") << true << QString(endpoints::kHeartbeat);
        QTest::newRow("the question for an ad") << true << QString(endpoints::kAdsAvailable);
    }

    void nothingComesOfACallThatWasStopped()
    {
        QFETCH(const bool, isRegistered);
        QFETCH(const QString, path);
        World world;
        if (isRegistered)
            world.platform.secrets.put(Keychain::kService, "token");
        const auto call = world.transport.hold(path);
        world.start();
        QVERIFY(call.isAwaited());

        world.end();

        checkThatNothingHappened(world);
    }

    void nothingComesOfTheLoopsOwnHeartbeatThatWasStopped()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");
        world.start();
        const auto heartbeat = world.transport.hold(endpoints::kHeartbeat);
        world.platform.clock.advance(300s);
        QVERIFY(heartbeat.isAwaited());

        world.end();

        checkThatNothingHappened(world);
    }

    void nothingComesOfPreferencesThatWereStopped()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");
        world.start();
        const auto preferences = world.transport.hold(endpoints::kPreferences);
        world.state->autoOpenAds = true;
        settle();
        QVERIFY(preferences.isAwaited());

        world.end();

        checkThatNothingHappened(world);
    }

    void aTokenThatIsFoundTooLateIsOfNoUse()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");
        world.platform.secrets.isLocked = true;
        world.platform.secrets.ignoresStops = true;
        world.start();

        world.end();
        world.platform.secrets.unlock();
        settle();

        checkThatNothingHappened(world);
    }

    void aTokenThatIsFoundTooLateForACallIsOfNoUse()
    {
        World world;
        auto registration = world.transport.hold(endpoints::kRegister);
        world.start();
        world.platform.secrets.isLocked = true;
        world.platform.secrets.ignoresStops = true;
        registration.answer(200, aRegistration());
        QCOMPARE(world.platform.secrets.operations.constLast(), u"read orvella.device-token"_s);

        world.end();
        world.platform.secrets.unlock();
        settle();

        checkThatNothingHappened(world);
    }

    void aTokenIsNotWrittenOnceTheStateHasGone()
    {
        World world;
        world.platform.secrets.writesWait = true;
        world.start();
        QCOMPARE(world.platform.secrets.operations.constLast(), u"remove orvella.device-token"_s);

        world.end();
        world.platform.secrets.unlock();
        settle();

        QVERIFY(world.platform.secrets.items(Keychain::kService).empty());
        checkThatNothingHappened(world);
    }

    /// The store may go with the state. A later start registers the device anew.
    void aTokenThatIsBeingWrittenGoesNoFurther()
    {
        World world;
        world.platform.secrets.writesWait = true;
        world.start();
        world.platform.secrets.unlock();
        QCOMPARE(world.platform.secrets.operations.count(u"remove orvella.device-token"_s), 2);

        world.end();
        world.platform.secrets.unlock();
        world.platform.secrets.unlock();
        settle();

        QVERIFY(world.platform.secrets.items(Keychain::kService).empty());
        QVERIFY(world.transport.requests().empty());
        QCOMPARE(world.changes, 0);
    }

private:
    static void checkThatNothingHappened(World& world)
    {
        world.platform.clock.advance(1h);
        settle();
        QCOMPARE(world.changes, 0);
        QCOMPARE(world.transport.paths(), QStringList());
        QCOMPARE(world.platform.secrets.operations, QStringList());
        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }
};

QTEST_GUILESS_MAIN(StoppedFlowsTest)

#include "StoppedFlowsTest.moc"
