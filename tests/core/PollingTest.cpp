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

    explicit World(const std::map<QString, Json>& settings = {})
    {
        platform.settings.values = settings;
        platform.secrets.put(Keychain::kService, "token");
        transport.answerEverything();
        state = std::make_unique<AppState>(platform.lend(), transport);
    }

    void poll()
    {
        state->pollForAd();
        settle();
    }

    [[nodiscard]] Json::Object lastBody(const QString& path) const { return transport.requests(path).back().body; }
};

const std::map<QString, Json> kConsenting {
    {u"anonymousMode"_s, false}, {u"appSignalConsent"_s, true}, {u"ageConfirmed"_s, true}};

} // namespace

class PollingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void theFirstCycleComesAtOnceAndTheNextAfterThePause()
    {
        World world;

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
        World world;
        world.transport.answer(endpoints::kAdsAvailable, AvailabilityResponse {false, 60, {}});

        world.state->startPolling();
        world.platform.clock.advance(60s);

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
    }

    void thePauseStartsWhenTheCycleHasEnded()
    {
        World world;
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
        World world;
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
        World world;
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
        World world;
        world.platform.clock.suspend(8h);
        world.state->startPolling();
        settle();

        world.platform.clock.advance(300s);

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
    }

    void theLoopEndsWithTheStateWhileItWaitsForTheNetwork()
    {
        World world;
        world.state->startPolling();
        settle();
        world.platform.clock.suspend(8h);

        world.state.reset();

        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void startingTwiceLeavesExactlyOneLoop()
    {
        World world;
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
        World world;

        world.state->startPolling();
        world.state->startPolling();
        settle();

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);
    }

    void aLoopStoppedDuringItsHeartbeatAsksForNothingMoreAndReportsNothing()
    {
        World world;
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
        World world;
        world.state->startPolling();
        settle();

        world.state.reset();

        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void aFailedHeartbeatDoesNotPreventThePoll()
    {
        World world;
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
        World world;
        world.transport.fail(endpoints::kHeartbeat, u"No network."_s);
        world.transport.fail(endpoints::kAdsAvailable, u"No network."_s);

        world.state->startPolling();
        world.platform.clock.advance(900s);

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 4);
    }

    void aSuccessfulHeartbeatClearsTheLastError()
    {
        World world;
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
        World world;
        world.transport.answer(endpoints::kAdsAvailable, AvailabilityResponse {false, answered, {}});

        world.poll();

        QCOMPARE(world.state->pollSeconds(), expected);
    }

    void anOfferIsPublishedAndTitled()
    {
        World world;
        world.transport.answer(endpoints::kAdsAvailable, anOffer());

        world.poll();

        QCOMPARE(world.state->availableAd(), anAd());
        QCOMPARE(world.state->statusTitle(), u"AD"_s);
    }

    void anAdIsOfferedThoughTheFlagSaysNone()
    {
        World world;
        auto response = anOffer();
        response.available = false;
        world.transport.answer(endpoints::kAdsAvailable, response);

        world.poll();

        QCOMPARE(world.state->availableAd(), anAd());
    }

    void theFlagWithoutAnAdIsNoOffer()
    {
        World world;
        world.transport.answer(endpoints::kAdsAvailable, AvailabilityResponse {true, {}, {}});

        world.poll();

        QVERIFY(!world.state->availableAd());
        QCOMPARE(world.state->statusTitle(), u"$0.00"_s);
    }

    void noOfferTakesAnEarlierOneBack()
    {
        World world;
        world.state->availableAd = anAd();
        world.state->statusTitle = u"AD"_s;
        world.state->availableCents = 637;

        world.poll();

        QVERIFY(!world.state->availableAd());
        QCOMPARE(world.state->statusTitle(), u"$6.37"_s);
    }

    void aCreativeFinished299SecondsAgoIsNotOffered()
    {
        World world;
        world.transport.answer(endpoints::kAdsAvailable, anOffer());
        world.state->finishAd(anAd());
        world.platform.clock.advance(299s);

        world.poll();

        QVERIFY(!world.state->availableAd());
        QCOMPARE(world.state->statusTitle(), u"$0.00"_s);
    }

    void aCreativeFinished300SecondsAgoIsOfferedAgain()
    {
        World world;
        world.transport.answer(endpoints::kAdsAvailable, anOffer());
        world.state->finishAd(anAd());
        world.platform.clock.advance(300s);

        world.poll();

        QCOMPARE(world.state->availableAd(), anAd());
        QCOMPARE(world.state->statusTitle(), u"AD"_s);
    }

    void anotherCreativeOfTheSameCampaignIsOffered()
    {
        World world;
        world.state->finishAd(anAd());
        auto other = anOffer();
        other.ad->creativeId = u"creative-2"_s;
        world.transport.answer(endpoints::kAdsAvailable, other);

        world.poll();

        QCOMPARE(world.state->availableAd(), other.ad);
    }

    void aFailedPollKeepsTheOfferTheTitleAndThePause()
    {
        World world;
        auto response = anOffer();
        response.pollSeconds = 77;
        world.transport.answer(endpoints::kAdsAvailable, response);
        world.poll();
        world.transport.fail(endpoints::kAdsAvailable, u"No network."_s);

        world.poll();

        QCOMPARE(world.state->availableAd(), anAd());
        QCOMPARE(world.state->statusTitle(), u"AD"_s);
        QCOMPARE(world.state->pollSeconds(), 77);
        QCOMPARE(world.state->lastError(), u"No network."_s);
    }

    void inAnonymousModeNoCategoryIsSentWhateverTheConsentSays()
    {
        auto settings = kConsenting;
        settings.insert_or_assign(u"anonymousMode"_s, true);
        World world(settings);
        world.platform.applications.running = {{true, u"org.gnome.Terminal"_s, u"Terminal"_s}};

        world.state->heartbeat();
        world.poll();

        const Json::Object availability {
            {u"anonymousMode"_s, true},
            {u"appSignalConsent"_s, true},
            {u"autoOpenAds"_s, false},
            {u"language"_s, u"de"_s},
            {u"categories"_s, Json::Array()},
        };
        auto heartbeat = availability;
        heartbeat.insert_or_assign(u"rawAppCount"_s, qint64 {0});
        QCOMPARE(world.lastBody(endpoints::kHeartbeat), heartbeat);
        QCOMPARE(world.lastBody(endpoints::kAdsAvailable), availability);
        QCOMPARE(world.platform.applications.readings, 0);
    }

    void withoutConsentNoCategoryIsSent()
    {
        World world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}});
        world.platform.applications.running = {{true, u"org.gnome.Terminal"_s, u"Terminal"_s}};

        world.state->heartbeat();
        settle();

        QCOMPARE(world.lastBody(endpoints::kHeartbeat).at(u"categories"_s), Json(Json::Array()));
        QCOMPARE(world.lastBody(endpoints::kHeartbeat).at(u"rawAppCount"_s), Json(qint64 {0}));
        QCOMPARE(world.platform.applications.readings, 0);
    }

    void withConsentTheCategoriesOfTheMomentAreSent()
    {
        World world(kConsenting);
        world.platform.applications.running = {
            {true, u"org.gnome.Terminal"_s, u"Terminal"_s}, {true, std::nullopt, u"Unknown"_s}};

        world.state->heartbeat();
        settle();
        world.platform.applications.running.clear();
        world.poll();

        QCOMPARE(world.lastBody(endpoints::kHeartbeat).at(u"categories"_s), Json(QStringList {u"developer_tools"_s}));
        QCOMPARE(world.lastBody(endpoints::kHeartbeat).at(u"rawAppCount"_s), Json(qint64 {2}));
        QCOMPARE(world.lastBody(endpoints::kAdsAvailable).at(u"categories"_s), Json(Json::Array()));
        QVERIFY(!world.lastBody(endpoints::kAdsAvailable).contains(u"rawAppCount"_s));
    }

    void theAgeIsNotAskedForAgainWhenCategoriesAreSent()
    {
        auto settings = kConsenting;
        settings.insert_or_assign(u"ageConfirmed"_s, false);
        World world(settings);
        world.platform.applications.running = {{true, u"org.gnome.Terminal"_s, u"Terminal"_s}};

        QCOMPARE(world.state->currentConsentedCategories().keys, QStringList {u"developer_tools"_s});
    }

    void aLocaleWithoutALanguageIsSentAsEnglish()
    {
        World world;
        world.platform.locale.language.reset();

        world.state->heartbeat();
        world.poll();

        QCOMPARE(world.lastBody(endpoints::kHeartbeat).at(u"language"_s), Json(u"en"_s));
        QCOMPARE(world.lastBody(endpoints::kAdsAvailable).at(u"language"_s), Json(u"en"_s));
    }
};

QTEST_GUILESS_MAIN(PollingTest)

#include "PollingTest.moc"
