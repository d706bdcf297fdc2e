#include "api/Endpoints.h"
#include "core/PollingWorld.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const std::map<QString, Json> kConsenting {
    {u"anonymousMode"_s, false}, {u"appSignalConsent"_s, true}, {u"ageConfirmed"_s, true}};

} // namespace

/// What one poll says of the viewer, and what becomes of its answer.
class PollForAdTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anOfferIsPublishedAndTitled()
    {
        PollingWorld world;
        world.transport.answer(endpoints::kAdsAvailable, anOffer());

        world.poll();

        QCOMPARE(world.state->availableAd(), anAd());
        QCOMPARE(world.state->statusTitle(), u"AD"_s);
    }

    void anAdIsOfferedThoughTheFlagSaysNone()
    {
        PollingWorld world;
        auto response = anOffer();
        response.available = false;
        world.transport.answer(endpoints::kAdsAvailable, response);

        world.poll();

        QCOMPARE(world.state->availableAd(), anAd());
    }

    void theFlagWithoutAnAdIsNoOffer()
    {
        PollingWorld world;
        world.transport.answer(endpoints::kAdsAvailable, AvailabilityResponse {true, {}, {}});

        world.poll();

        QVERIFY(!world.state->availableAd());
        QCOMPARE(world.state->statusTitle(), u"$0.00"_s);
    }

    void noOfferTakesAnEarlierOneBack()
    {
        PollingWorld world;
        world.state->availableAd = anAd();
        world.state->statusTitle = u"AD"_s;
        world.state->availableCents = 637;

        world.poll();

        QVERIFY(!world.state->availableAd());
        QCOMPARE(world.state->statusTitle(), u"$6.37"_s);
    }

    void aCreativeFinished299SecondsAgoIsNotOffered()
    {
        PollingWorld world;
        world.transport.answer(endpoints::kAdsAvailable, anOffer());
        world.state->finishAd(anAd());
        world.platform.clock.advance(299s);

        world.poll();

        QVERIFY(!world.state->availableAd());
        QCOMPARE(world.state->statusTitle(), u"$0.00"_s);
    }

    void aCreativeFinished300SecondsAgoIsOfferedAgain()
    {
        PollingWorld world;
        world.transport.answer(endpoints::kAdsAvailable, anOffer());
        world.state->finishAd(anAd());
        world.platform.clock.advance(300s);

        world.poll();

        QCOMPARE(world.state->availableAd(), anAd());
        QCOMPARE(world.state->statusTitle(), u"AD"_s);
    }

    void anotherCreativeOfTheSameCampaignIsOffered()
    {
        PollingWorld world;
        world.state->finishAd(anAd());
        auto other = anOffer();
        other.ad->creativeId = u"creative-2"_s;
        world.transport.answer(endpoints::kAdsAvailable, other);

        world.poll();

        QCOMPARE(world.state->availableAd(), other.ad);
    }

    void aFailedPollKeepsTheOfferTheTitleAndThePause()
    {
        PollingWorld world;
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
        PollingWorld world(settings);
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
        PollingWorld world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}});
        world.platform.applications.running = {{true, u"org.gnome.Terminal"_s, u"Terminal"_s}};

        world.state->heartbeat();
        settle();

        QCOMPARE(world.lastBody(endpoints::kHeartbeat).at(u"categories"_s), Json(Json::Array()));
        QCOMPARE(world.lastBody(endpoints::kHeartbeat).at(u"rawAppCount"_s), Json(qint64 {0}));
        QCOMPARE(world.platform.applications.readings, 0);
    }

    void withConsentTheCategoriesOfTheMomentAreSent()
    {
        PollingWorld world(kConsenting);
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
        PollingWorld world(settings);
        world.platform.applications.running = {{true, u"org.gnome.Terminal"_s, u"Terminal"_s}};

        QCOMPARE(world.state->currentConsentedCategories().keys, QStringList {u"developer_tools"_s});
    }

    void aLocaleWithoutALanguageIsSentAsEnglish()
    {
        PollingWorld world;
        world.platform.locale.language.reset();

        world.state->heartbeat();
        world.poll();

        QCOMPARE(world.lastBody(endpoints::kHeartbeat).at(u"language"_s), Json(u"en"_s));
        QCOMPARE(world.lastBody(endpoints::kAdsAvailable).at(u"language"_s), Json(u"en"_s));
    }
};

QTEST_GUILESS_MAIN(PollForAdTest)

#include "PollForAdTest.moc"
