#include "api/Endpoints.h"
#include "core/PollingWorld.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

/// The loop that asks for an ad, and its pace.
class PollingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFirstCycleComesAtOnceAndTheNextAfterThePause()
    {
        PollingWorld world;

        world.state->startPolling();
        settle();
        QCOMPARE(world.transport.paths(), (QStringList {endpoints::kHeartbeat, endpoints::kAdsAvailable}));

        world.platform.clock.advance(299s);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);

        world.platform.clock.advance(1s);
        QCOMPARE(world.transport.paths(),
            (QStringList {
                endpoints::kHeartbeat, endpoints::kAdsAvailable, endpoints::kHeartbeat, endpoints::kAdsAvailable}));
    }

    void aNewPauseAppliesToTheVeryNextWait()
    {
        PollingWorld world;
        world.transport.answer(endpoints::kAdsAvailable, AvailabilityResponse {false, 60, {}});

        world.state->startPolling();
        world.platform.clock.advance(60s);

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
    }

    void thePauseStartsWhenTheCycleHasEnded()
    {
        PollingWorld world;
        auto reply = world.transport.hold(endpoints::kAdsAvailable);
        world.state->startPolling();
        world.platform.clock.advance(50s);

        reply.answer(200, noOffer());
        world.platform.clock.advance(299s);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);

        world.platform.clock.advance(1s);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
    }

    void aPollThatBecameDueInASuspensionHappensWhenTheNetworkHasHadTimeToComeBack()
    {
        PollingWorld world;
        world.state->startPolling();
        settle();
        world.transport.forgetRequests();

        world.platform.clock.suspend(8h);
        world.platform.clock.advance(9s);
        QCOMPARE(world.transport.paths(), QStringList());

        world.platform.clock.advance(1s);
        QCOMPARE(world.transport.paths(), (QStringList {endpoints::kHeartbeat, endpoints::kAdsAvailable}));

        world.platform.clock.advance(299s);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);
        world.platform.clock.advance(1s);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
    }

    void aPollThatBecomesDueAfterWakingGivesTheNetworkItsTimeToo_data()
    {
        QTest::addColumn<int>("awakeSeconds");
        QTest::newRow("at once") << 0;
        QTest::newRow("after a moment") << 3;
        QTest::newRow("long after") << 100;
    }

    void aPollThatBecomesDueAfterWakingGivesTheNetworkItsTimeToo()
    {
        QFETCH(const int, awakeSeconds);
        PollingWorld world;
        world.state->startPolling();
        settle();

        world.platform.clock.suspend(300s - std::chrono::seconds(awakeSeconds));
        world.platform.clock.advance(std::chrono::seconds(awakeSeconds) + 10s - 1ns);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);

        world.platform.clock.advance(1ns);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
    }

    void withoutASuspensionAPollIsNeverLate()
    {
        PollingWorld world;
        world.platform.clock.suspend(8h);
        world.state->startPolling();
        settle();

        world.platform.clock.advance(300s);

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
    }

    void theLoopEndsWithTheStateWhileItWaitsForTheNetwork()
    {
        PollingWorld world;
        world.state->startPolling();
        settle();
        world.platform.clock.suspend(8h);

        world.state.reset();

        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void startingTwiceLeavesExactlyOneLoop()
    {
        PollingWorld world;
        world.state->startPolling();
        settle();
        world.transport.forgetRequests();

        world.state->startPolling();
        settle();
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);
        QCOMPARE(world.platform.clock.sleepers(), 1U);

        world.platform.clock.advance(300s);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
    }

    void startingTwiceInARowRunsTheFirstLoopNotAtAll()
    {
        PollingWorld world;

        world.state->startPolling();
        world.state->startPolling();
        settle();

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);
    }

    void aLoopStoppedDuringItsHeartbeatAsksForNothingMoreAndReportsNothing()
    {
        PollingWorld world;
        const auto heartbeat = world.transport.hold(endpoints::kHeartbeat);
        world.state->startPolling();
        settle();
        QVERIFY(heartbeat.isAwaited());

        world.state->startPolling();
        settle();

        QCOMPARE(world.transport.paths(),
            (QStringList {endpoints::kHeartbeat, endpoints::kHeartbeat, endpoints::kAdsAvailable}));
        QVERIFY(!world.state->lastError());
    }

    void theLoopEndsWithTheState()
    {
        PollingWorld world;
        world.state->startPolling();
        settle();

        world.state.reset();

        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void aFailedHeartbeatDoesNotPreventThePoll()
    {
        PollingWorld world;
        world.transport.fail(endpoints::kHeartbeat, u"No network."_s);
        auto poll = world.transport.hold(endpoints::kAdsAvailable);

        world.state->startPolling();
        settle();

        QVERIFY(poll.isAwaited());
        QCOMPARE(world.state->lastError(), u"No network."_s);
        poll.answer(200, noOffer());
        QVERIFY(!world.state->lastError());
    }

    void aFailingServiceIsAskedAgainAfterTheSamePause()
    {
        PollingWorld world;
        world.transport.fail(endpoints::kHeartbeat, u"No network."_s);
        world.transport.fail(endpoints::kAdsAvailable, u"No network."_s);

        world.state->startPolling();
        world.platform.clock.advance(900s);

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 4);
    }

    void aSuccessfulHeartbeatClearsTheLastError()
    {
        PollingWorld world;
        world.state->lastError = u"old"_s;

        world.state->heartbeat();
        settle();

        QVERIFY(!world.state->lastError());
    }

    void thePauseOfTheServiceIsKeptInBounds_data()
    {
        QTest::addColumn<std::optional<qint64>>("answered");
        QTest::addColumn<qint64>("expected");

        QTest::newRow("10") << std::optional<qint64>(10) << qint64 {60};
        QTest::newRow("59") << std::optional<qint64>(59) << qint64 {60};
        QTest::newRow("60") << std::optional<qint64>(60) << qint64 {60};
        QTest::newRow("61") << std::optional<qint64>(61) << qint64 {61};
        QTest::newRow("900") << std::optional<qint64>(900) << qint64 {900};
        QTest::newRow("901") << std::optional<qint64>(901) << qint64 {900};
        QTest::newRow("negative") << std::optional<qint64>(-1) << qint64 {60};
        QTest::newRow("absent") << std::optional<qint64>() << qint64 {300};
    }

    void thePauseOfTheServiceIsKeptInBounds()
    {
        QFETCH(std::optional<qint64>, answered);
        QFETCH(qint64, expected);
        PollingWorld world;
        world.transport.answer(endpoints::kAdsAvailable, AvailabilityResponse {false, answered, {}});

        world.poll();

        QCOMPARE(world.state->pollSeconds(), expected);
    }
};

QTEST_GUILESS_MAIN(PollingTest)

#include "PollingTest.moc"
