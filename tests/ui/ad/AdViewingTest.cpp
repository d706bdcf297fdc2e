#include "api/Endpoints.h"
#include "ui/ad/ViewingWorld.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

/// An ad that is watched to its end, and what it earns.
class AdViewingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aWatchedAdIsCompletedPaidAndClosedThreeSecondsLater()
    {
        ViewingWorld world;
        world.start();
        QCOMPARE(world.viewing->remaining(), 15);

        world.platform.clock.advance(ViewingWorld::kRequired - 1s);
        QCOMPARE(world.viewing->remaining(), 1);
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);

        world.platform.clock.advance(1s);
        QCOMPARE(world.viewing->remaining(), 0);
        QVERIFY(world.viewing->completed());
        QCOMPARE(world.finished, world.once(12.5));
        QCOMPARE(world.transport.requests(endpoints::kSessionComplete).front().body,
            (Json::Object {{u"sessionId"_s, u"session-1"_s}}));

        world.platform.clock.advance(3s - 1ns);
        QCOMPARE(world.closings, 0);
        QCOMPARE(world.failures, QStringList());

        world.platform.clock.advance(1ns);
        QCOMPARE(world.closings, 1);
        QCOMPARE(world.platform.clock.sleepers(), 0U);
        QCOMPARE(world.finished.size(), 1U);
    }

    void theAnonymousModeOfTheOpeningIsSent()
    {
        ViewingWorld world;
        world.open(anAd(), false);

        world.viewing->start();
        settle();

        QCOMPARE(world.transport.requests(endpoints::kSessionStart).front().body.at(u"anonymousMode"_s), Json(false));
    }

    void theCountdownStartsOnlyWhenTheSessionHas()
    {
        ViewingWorld world;
        auto session = world.transport.hold(endpoints::kSessionStart);
        world.start();

        world.platform.clock.advance(1h);
        QCOMPARE(world.viewing->remaining(), 15);

        session.answer(200, aSession());
        world.platform.clock.advance(ViewingWorld::kRequired - 1s);
        QCOMPARE(world.viewing->remaining(), 1);
    }

    void aSecondOfTheCountdownIsASecondAwake()
    {
        ViewingWorld world;
        world.start();
        world.platform.clock.advance(5s);

        world.platform.clock.suspend(8h);
        QCOMPARE(world.viewing->remaining(), 10);

        world.platform.clock.advance(10s - 1ns);
        QCOMPARE(world.viewing->remaining(), 1);
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
        world.platform.clock.advance(1ns);
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 1);
    }

    void theSessionsOwnSecondsDoNotCount()
    {
        ViewingWorld world;
        auto session = aSession();
        session.requiredSeconds = 60;
        world.transport.answer(endpoints::kSessionStart, session);

        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired);

        QVERIFY(world.viewing->completed());
    }

    void startingTwiceOpensOneSession()
    {
        ViewingWorld world;
        world.start();

        world.viewing->start();
        settle();

        QCOMPARE(world.transport.count(endpoints::kSessionStart), 1);
    }

    void anAdWithoutRequiredSecondsIsCompletedAtOnce_data()
    {
        QTest::addColumn<qint64>("seconds");
        QTest::newRow("zero") << qint64 {0};
        QTest::newRow("negative") << qint64 {-5};
    }

    void anAdWithoutRequiredSecondsIsCompletedAtOnce()
    {
        QFETCH(qint64, seconds);
        ViewingWorld world;
        auto ad = anAd();
        ad.requiredSeconds = seconds;

        world.start(ad);

        QVERIFY(world.viewing->completed());
        QCOMPARE(world.finished, world.once(12.5));
    }

    void anAdOfOneSecondTakesOneSecond()
    {
        ViewingWorld world;
        auto ad = anAd();
        ad.requiredSeconds = 1;
        world.start(ad);
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);

        world.platform.clock.advance(1s);

        QVERIFY(world.viewing->completed());
    }

    void theExactEarningsTakePrecedence()
    {
        ViewingWorld world;
        auto completion = aCompletion();
        completion.viewerEarnCents = 1;
        completion.viewerEarnCentsExact = 1.25;
        world.transport.answer(endpoints::kSessionComplete, completion);

        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired);

        QCOMPARE(world.finished, world.once(1.25));
    }

    void withoutExactEarningsTheWholeCentsCount()
    {
        ViewingWorld world;
        auto completion = aCompletion();
        completion.viewerEarnCents = 3;
        completion.viewerEarnCentsExact.reset();
        world.transport.answer(endpoints::kSessionComplete, completion);

        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired);

        QCOMPARE(world.finished, world.once(3.0));
    }

    void aViewThatWasNotCreditedEarnsNothingAndCloses()
    {
        ViewingWorld world;
        auto completion = aCompletion();
        completion.completed = false;
        world.transport.answer(endpoints::kSessionComplete, completion);

        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired);
        QVERIFY(!world.viewing->completed());
        QCOMPARE(world.finished, world.once(std::nullopt));

        world.platform.clock.advance(3s);
        QCOMPARE(world.closings, 1);
    }

    void aFailedStartShowsZeroFinishesWithNothingAndCloses()
    {
        ViewingWorld world;
        world.transport.fail(endpoints::kSessionStart, u"No network."_s);

        world.start();
        QCOMPARE(world.viewing->remaining(), 0);
        QVERIFY(!world.viewing->completed());
        QCOMPARE(world.finished, world.once(std::nullopt));
        QCOMPARE(world.failures, QStringList {u"No network."_s});
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);

        world.platform.clock.advance(3s - 1ns);
        QCOMPARE(world.closings, 0);
        world.platform.clock.advance(1ns);
        QCOMPARE(world.closings, 1);
    }

    void aFailedCompletionFinishesWithNothingAndCloses()
    {
        ViewingWorld world;
        world.transport.fail(endpoints::kSessionComplete, u"No network."_s);

        world.start();
        world.platform.clock.advance(ViewingWorld::kRequired + 3s);

        QVERIFY(!world.viewing->completed());
        QCOMPARE(world.finished, world.once(std::nullopt));
        QCOMPARE(world.closings, 1);
    }
};

QTEST_GUILESS_MAIN(AdViewingTest)

#include "AdViewingTest.moc"
