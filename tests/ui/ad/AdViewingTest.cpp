#include "ui/ad/AdViewing.h"

#include "api/APIClient.h"
#include "api/Endpoints.h"
#include "core/Keychain.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kRequired = 15s;

struct World {
    FakePlatform platform;
    FakeTransport transport;
    APIClient api {platform.lend(), transport};
    std::unique_ptr<AdViewing> viewing;

    int linksOpened = 0;
    int dismissals = 0;
    int closings = 0;
    std::vector<std::optional<double>> finished;
    QStringList failures;

    World() { transport.answerEverything(); }

    void open(const AvailableAd& ad = anAd(), bool anonymousMode = true)
    {
        viewing = std::make_unique<AdViewing>(ad, api, anonymousMode, platform.clock, platform.browser,
            AdViewing::Actions {
                .keepOpenAfterLink = [this] { ++linksOpened; },
                .dismiss =
                    [this] {
                        ++dismissals;
                        viewing->cancel();
                    },
                .close =
                    [this] {
                        ++closings;
                        viewing->cancel();
                    },
                .onFinished = [this](std::optional<double> cents) { finished.push_back(cents); },
                .onFailed = [this](const Failure& failure) { failures.append(failure.description); },
            });
    }

    void start(const AvailableAd& ad = anAd())
    {
        open(ad);
        viewing->start();
        settle();
    }

    [[nodiscard]] std::vector<std::optional<double>> once(std::optional<double> cents) const { return {cents}; }
};

} // namespace

class AdViewingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aWatchedAdIsCompletedPaidAndClosedThreeSecondsLater()
    {
        World world;
        world.start();
        QCOMPARE(world.viewing->remaining(), 15);

        world.platform.clock.advance(kRequired - 1s);
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
        World world;
        world.open(anAd(), false);

        world.viewing->start();
        settle();

        QCOMPARE(world.transport.requests(endpoints::kSessionStart).front().body.at(u"anonymousMode"_s), Json(false));
    }

    void theCountdownStartsOnlyWhenTheSessionHas()
    {
        World world;
        auto session = world.transport.hold(endpoints::kSessionStart);
        world.start();

        world.platform.clock.advance(1h);
        QCOMPARE(world.viewing->remaining(), 15);

        session.answer(200, aSession());
        world.platform.clock.advance(kRequired - 1s);
        QCOMPARE(world.viewing->remaining(), 1);
    }

    void aSecondOfTheCountdownIsASecondAwake()
    {
        World world;
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
        World world;
        auto session = aSession();
        session.requiredSeconds = 60;
        world.transport.answer(endpoints::kSessionStart, session);

        world.start();
        world.platform.clock.advance(kRequired);

        QVERIFY(world.viewing->completed());
    }

    void startingTwiceOpensOneSession()
    {
        World world;
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
        World world;
        auto ad = anAd();
        ad.requiredSeconds = seconds;

        world.start(ad);

        QVERIFY(world.viewing->completed());
        QCOMPARE(world.finished, world.once(12.5));
    }

    void anAdOfOneSecondTakesOneSecond()
    {
        World world;
        auto ad = anAd();
        ad.requiredSeconds = 1;
        world.start(ad);
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);

        world.platform.clock.advance(1s);

        QVERIFY(world.viewing->completed());
    }

    void dismissDuringTheCountdownCompletesAndFinishesNothing()
    {
        World world;
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
        World world;
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
        World world;
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
        World world;
        auto completion = world.transport.hold(endpoints::kSessionComplete);
        world.start();
        world.platform.clock.advance(kRequired);
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
        World world;
        auto completion = world.transport.hold(endpoints::kSessionComplete);
        world.start();
        world.platform.clock.advance(kRequired);
        world.viewing->dismissed = true;

        completion.answer(200, aCompletion());

        QVERIFY(!world.viewing->completed());
        QVERIFY(world.finished.empty());
    }

    void dismissInTheGracePeriodDoesNotCloseAgain()
    {
        World world;
        world.start();
        world.platform.clock.advance(kRequired + 1s);

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
        World world;
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
        World world;
        const auto completion = world.transport.hold(endpoints::kSessionComplete);
        world.start();
        world.platform.clock.advance(kRequired);

        world.viewing->cancel();
        settle();

        QVERIFY(world.finished.empty());
        QCOMPARE(world.transport.waiting(), 0);
    }

    void aViewingThatIsDestroyedLeavesNothingWaiting()
    {
        World world;
        world.start();
        world.platform.clock.advance(5s);

        world.viewing.reset();

        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void theExactEarningsTakePrecedence()
    {
        World world;
        auto completion = aCompletion();
        completion.viewerEarnCents = 1;
        completion.viewerEarnCentsExact = 1.25;
        world.transport.answer(endpoints::kSessionComplete, completion);

        world.start();
        world.platform.clock.advance(kRequired);

        QCOMPARE(world.finished, world.once(1.25));
    }

    void withoutExactEarningsTheWholeCentsCount()
    {
        World world;
        auto completion = aCompletion();
        completion.viewerEarnCents = 3;
        completion.viewerEarnCentsExact.reset();
        world.transport.answer(endpoints::kSessionComplete, completion);

        world.start();
        world.platform.clock.advance(kRequired);

        QCOMPARE(world.finished, world.once(3.0));
    }

    void aViewThatWasNotCreditedEarnsNothingAndCloses()
    {
        World world;
        auto completion = aCompletion();
        completion.completed = false;
        world.transport.answer(endpoints::kSessionComplete, completion);

        world.start();
        world.platform.clock.advance(kRequired);
        QVERIFY(!world.viewing->completed());
        QCOMPARE(world.finished, world.once(std::nullopt));

        world.platform.clock.advance(3s);
        QCOMPARE(world.closings, 1);
    }

    void aFailedStartShowsZeroFinishesWithNothingAndCloses()
    {
        World world;
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

    void aKeyringThatAnswersAfterTheViewingHasGoneStartsNothing()
    {
        World world;
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
        World world;
        world.start();

        world.viewing->dismiss();
        world.viewing->dismiss();

        QCOMPARE(world.dismissals, 1);
    }

    void aDismissalEndsTheViewingEvenIfItsOwnerLeavesItOnTheScreen()
    {
        World world;
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
        World world;
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

    void aFailedCompletionFinishesWithNothingAndCloses()
    {
        World world;
        world.transport.fail(endpoints::kSessionComplete, u"No network."_s);

        world.start();
        world.platform.clock.advance(kRequired + 3s);

        QVERIFY(!world.viewing->completed());
        QCOMPARE(world.finished, world.once(std::nullopt));
        QCOMPARE(world.closings, 1);
    }

    void aClickIsRecordedAndOpensTheAnsweredPage()
    {
        World world;
        world.start();

        world.viewing->openAd();
        settle();

        QCOMPARE(world.transport.requests(endpoints::kClick).front().body,
            (Json::Object {{u"sessionId"_s, u"session-1"_s}}));
        QCOMPARE(world.platform.browser.opened, std::vector {QUrl(u"https://brightleaf.test/landing?click=1"_s)});
        QCOMPARE(world.linksOpened, 1);
    }

    void aClickDoesNotStopTheCountdown()
    {
        World world;
        const auto click = world.transport.hold(endpoints::kClick);
        world.start();

        world.viewing->openAd();
        world.platform.clock.advance(kRequired);

        QVERIFY(click.isAwaited());
        QVERIFY(world.viewing->completed());
        world.viewing.reset();
        QCOMPARE(world.transport.waiting(), 0);
    }

    void aClickUnderWayWhenThePanelClosesStillOpensThePage()
    {
        World world;
        auto click = world.transport.hold(endpoints::kClick);
        world.start();
        world.viewing->openAd();

        world.viewing->dismiss();
        click.answer(200, aClick());

        QCOMPARE(world.platform.browser.opened.size(), 1U);
    }

    void aClickBeforeTheSessionOpensTheAdsOwnPageAndRecordsNothing()
    {
        World world;
        const auto session = world.transport.hold(endpoints::kSessionStart);
        world.start();

        world.viewing->openAd();
        settle();

        QCOMPARE(world.platform.browser.opened, std::vector {QUrl(u"https://brightleaf.test/offer"_s)});
        QCOMPARE(world.transport.count(endpoints::kClick), 0);
        QCOMPARE(world.linksOpened, 1);
    }

    void aClickAfterAFailedStartOpensTheAdsOwnPage()
    {
        World world;
        world.transport.fail(endpoints::kSessionStart, u"No network."_s);
        world.start();

        world.viewing->openAd();

        QCOMPARE(world.platform.browser.opened.size(), 1U);
        QCOMPARE(world.transport.count(endpoints::kClick), 0);
    }

    void aFailedClickDoesNothing()
    {
        World world;
        world.transport.fail(endpoints::kClick, u"No network."_s);
        world.start();

        world.viewing->openAd();
        settle();

        QVERIFY(world.platform.browser.opened.empty());
        QCOMPARE(world.linksOpened, 0);
        QVERIFY(world.finished.empty());
    }

    void anAddressThatIsNoWebAddressIsNotOpened_data()
    {
        QTest::addColumn<QString>("address");
        for (const auto* const address : {"", "not an address", "brightleaf.test", "/offer", "file:///etc/passwd",
                 "mailto:a@b.test", "https:///x", "javascript:alert(1)", "vnc://host", "https://a b.test"})
            QTest::addRow("%s", address) << QString::fromLatin1(address);
    }

    void anAddressThatIsNoWebAddressIsNotOpened()
    {
        QFETCH(QString, address);
        World world;
        world.transport.answer(endpoints::kClick, ClickResponse {address});
        world.start();

        world.viewing->openAd();
        settle();

        QVERIFY(world.platform.browser.opened.empty());
        QCOMPARE(world.linksOpened, 0);
    }

    void anAddressOfTheAdThatIsNoWebAddressIsNotOpenedEither()
    {
        World world;
        auto ad = anAd();
        ad.targetUrl = u"not an address"_s;
        world.transport.fail(endpoints::kSessionStart, u"No network."_s);
        world.start(ad);

        world.viewing->openAd();
        settle();

        QVERIFY(world.platform.browser.opened.empty());
        QCOMPARE(world.linksOpened, 0);
    }

    void aBrowserThatRefusesDoesNotBringThePanelBack()
    {
        World world;
        world.platform.browser.succeeds = false;
        world.start();

        world.viewing->openAd();
        settle();

        QCOMPARE(world.platform.browser.opened.size(), 1U);
        QCOMPARE(world.linksOpened, 0);
    }
};

QTEST_GUILESS_MAIN(AdViewingTest)

#include "AdViewingTest.moc"
