#include "api/Endpoints.h"
#include "core/Keychain.h"
#include "ui/ad/ViewingWorld.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

/// An ad whose viewing ends before it is over: dismissed, cancelled with its panel, or destroyed.
class DismissedAdTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void dismissDuringTheCountdownCompletesAndFinishesNothing()
    {
        ViewingWorld world;
        world.start();
        world.platform.clock.advance(5s);

        world.viewing->dismiss();
        world.platform.clock.advance(1h);

        QVERIFY(world.viewing->dismissed());
        QCOMPARE(world.dismissals, 1);
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
        QVERIFY(world.finished.empty());
        QCOMPARE(world.closings, 0);
        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void dismissBeforeTheSessionHasStartedEndsSilently()
    {
        ViewingWorld world;
        auto session = world.transport.hold(endpoints::kSessionStart);
        world.start();

        world.viewing->dismiss();
        session.answer(200, aSession());
        world.platform.clock.advance(1h);

        QVERIFY(!world.viewing->session());
        QVERIFY(world.finished.empty());
        QCOMPARE(world.closings, 0);
    }

    void dismissBeforeAFailedStartFinishesNothing()
    {
        ViewingWorld world;
        auto session = world.transport.hold(endpoints::kSessionStart);
        world.open();
        world.viewing->start();
        settle();
        world.viewing->dismissed = true;

        session.give(failed(Failure::Kind::unreachable, u"No network."_s));

        QVERIFY(world.finished.empty());
        QCOMPARE(world.viewing->remaining(), 15);
    }

    void dismissWhileCompletingDropsTheAnswer()
    {
        ViewingWorld world;
        auto completion = world.transport.hold(endpoints::kSessionComplete);
        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired);
        QVERIFY(completion.isAwaited());

        world.viewing->dismiss();
        completion.answer(200, aCompletion());
        world.platform.clock.advance(1h);

        QVERIFY(!world.viewing->completed());
        QVERIFY(world.finished.empty());
        QCOMPARE(world.closings, 0);
    }

    void dismissedThoughStillOnScreenTheAnswerIsDroppedToo()
    {
        ViewingWorld world;
        auto completion = world.transport.hold(endpoints::kSessionComplete);
        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired);
        world.viewing->dismissed = true;

        completion.answer(200, aCompletion());

        QVERIFY(!world.viewing->completed());
        QVERIFY(world.finished.empty());
    }

    void dismissInTheGracePeriodDoesNotCloseAgain()
    {
        ViewingWorld world;
        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired + 1s);

        world.viewing->dismiss();
        world.platform.clock.advance(1h);

        QCOMPARE(world.finished.size(), 1U);
        QCOMPARE(world.dismissals, 1);
        QCOMPARE(world.closings, 0);
    }

    void aPanelThatGoesAwayEndsTheViewingSilently_data()
    {
        QTest::addColumn<int>("seconds");
        QTest::newRow("at the start") << 0;
        QTest::newRow("in the countdown") << 7;
        QTest::newRow("in the grace period") << 16;
    }

    void aPanelThatGoesAwayEndsTheViewingSilently()
    {
        QFETCH(int, seconds);
        ViewingWorld world;
        world.start();
        world.platform.clock.advance(std::chrono::seconds(seconds));
        const auto finishedBefore = world.finished.size();

        world.viewing->cancel();
        world.platform.clock.advance(1h);

        QCOMPARE(world.finished.size(), finishedBefore);
        QCOMPARE(world.closings, 0);
        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void aCancelledCompletionIsNoFailure()
    {
        ViewingWorld world;
        const auto completion = world.transport.hold(endpoints::kSessionComplete);
        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired);

        world.viewing->cancel();
        settle();

        QVERIFY(world.finished.empty());
        QCOMPARE(world.transport.waiting(), 0);
    }

    void aViewingThatIsDestroyedLeavesNothingWaiting()
    {
        ViewingWorld world;
        world.start();
        world.platform.clock.advance(5s);

        world.viewing.reset();

        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void aKeyringThatAnswersAfterTheViewingHasGoneStartsNothing()
    {
        ViewingWorld world;
        world.platform.secrets.put(Keychain::kService, "token");
        world.platform.secrets.isLocked = true;
        world.platform.secrets.ignoresStops = true;
        world.start();

        world.viewing.reset();
        world.platform.secrets.unlock();
        settle();

        QCOMPARE(world.transport.count(endpoints::kSessionStart), 0);
        QVERIFY(world.finished.empty());
    }

    void anAdIsDismissedOnce()
    {
        ViewingWorld world;
        world.start();

        world.viewing->dismiss();
        world.viewing->dismiss();

        QCOMPARE(world.dismissals, 1);
    }

    void aDismissalEndsTheViewingEvenIfItsOwnerLeavesItOnTheScreen()
    {
        ViewingWorld world;
        world.viewing =
            std::make_unique<AdViewing>(anAd(), world.api, true, world.platform.clock, world.platform.browser,
                AdViewing::Actions {[] {}, [] {}, [] {},
                    [&world](std::optional<double> cents) { world.finished.push_back(cents); }, {}});
        world.viewing->start();
        settle();

        world.viewing->dismiss();
        world.platform.clock.advance(1min);

        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
        QVERIFY(world.finished.empty());
        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void aSessionThatBeginsAfterTheDismissalIsNotTakenUp()
    {
        ViewingWorld world;
        auto session = world.transport.hold(endpoints::kSessionStart);
        world.viewing = std::make_unique<AdViewing>(anAd(), world.api, true, world.platform.clock,
            world.platform.browser, AdViewing::Actions {[] {}, [] {}, [] {}, [](std::optional<double>) {}, {}});
        world.viewing->start();
        settle();
        world.viewing->dismiss();

        session.answer(200, aSession());

        QVERIFY(!world.viewing->session());
        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }
};

QTEST_GUILESS_MAIN(DismissedAdTest)

#include "DismissedAdTest.moc"
