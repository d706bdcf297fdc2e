#include "api/Endpoints.h"
#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppState> state;

    explicit World(std::map<QString, Json> settings = {})
    {
        settings.insert_or_assign(u"didConfigureLaunchAtLogin"_s, true);
        platform.settings.values = settings;
        transport.answerEverything();
        state = std::make_unique<AppState>(platform.lend(), transport);
    }

    [[nodiscard]] std::optional<bool> stored(const QString& key) const { return platform.settings.boolean(key); }

    /// The bodies of the preference requests made by now.
    [[nodiscard]] std::vector<Json::Object> sent()
    {
        settle();
        std::vector<Json::Object> bodies;
        for (const auto& request : transport.requests(endpoints::kPreferences))
            bodies.push_back(request.body);
        return bodies;
    }
};

Json::Object preferences(bool anonymousMode, bool appSignalConsent, bool autoOpenAds)
{
    return {
        {u"anonymousMode"_s, anonymousMode},
        {u"appSignalConsent"_s, appSignalConsent},
        {u"autoOpenAds"_s, autoOpenAds},
    };
}

} // namespace

class PreferencesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void consentWithoutConfirmedAgeIsRefused()
    {
        World world({{u"anonymousMode"_s, false}});

        world.state->appSignalConsent = true;

        QVERIFY(!world.state->appSignalConsent());
        QCOMPARE(world.stored(u"appSignalConsent"_s), false);
        QCOMPARE(world.platform.settings.writes, QStringList {u"appSignalConsent"_s});
        QCOMPARE(world.sent(), std::vector {preferences(false, false, false)});
    }

    void foundConsentWithoutConfirmedAgeEndsWithTheFirstChoice()
    {
        World world({{u"anonymousMode"_s, false}, {u"appSignalConsent"_s, true}});
        QVERIFY(world.state->appSignalConsent());

        world.state->anonymousMode = false;

        QVERIFY(!world.state->appSignalConsent());
        QCOMPARE(world.stored(u"appSignalConsent"_s), false);
    }

    void whatIsSentIsWhatHoldsWhenTheKeyringIsUnlocked()
    {
        World world({{u"anonymousMode"_s, false}, {u"appSignalConsent"_s, true}, {u"ageConfirmed"_s, true}});
        world.platform.secrets.put(Keychain::kService, "token");
        world.platform.applications.running = {{true, u"org.blender.Blender"_s, u"Blender"_s}};
        world.platform.secrets.isLocked = true;
        world.state->heartbeat();
        world.state->autoOpenAds = true;
        settle();

        world.state->anonymousMode = true;
        settle();
        world.platform.secrets.unlock();
        settle();

        const auto heartbeats = world.transport.requests(endpoints::kHeartbeat);
        QCOMPARE(heartbeats.size(), 1U);
        QCOMPARE(heartbeats.front().body.at(u"categories"_s), Json(Json::Array()));
        QCOMPARE(heartbeats.front().body.at(u"rawAppCount"_s), Json(0LL));
        for (const auto& body : world.sent())
            QCOMPARE(body, preferences(true, false, true));
    }

    void consentWithConfirmedAgeIsStoredAndSent()
    {
        World world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}});

        world.state->appSignalConsent = true;

        QCOMPARE(world.stored(u"appSignalConsent"_s), true);
        QCOMPARE(world.sent(), std::vector {preferences(false, true, false)});
    }

    void anonymousModeDoesNotBlockConsent()
    {
        World world({{u"ageConfirmed"_s, true}});

        world.state->appSignalConsent = true;

        QVERIFY(world.state->appSignalConsent());
        QCOMPARE(world.sent(), std::vector {preferences(true, true, false)});
    }

    void anonymousModeWithdrawsConsentBeforeItIsStoredItself()
    {
        World world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}, {u"appSignalConsent"_s, true}});

        world.state->anonymousMode = true;

        QVERIFY(!world.state->appSignalConsent());
        QCOMPARE(world.platform.settings.writes, (QStringList {u"appSignalConsent"_s, u"anonymousMode"_s}));
        QCOMPARE(world.stored(u"appSignalConsent"_s), false);
        QCOMPARE(world.stored(u"anonymousMode"_s), true);
        QCOMPARE(world.sent(), (std::vector {preferences(true, false, false), preferences(true, false, false)}));
    }

    void leavingAnonymousModeDoesNotBringConsentBack()
    {
        World world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}, {u"appSignalConsent"_s, true}});
        world.state->anonymousMode = true;

        world.state->anonymousMode = false;

        QVERIFY(!world.state->appSignalConsent());
        QCOMPARE(world.stored(u"anonymousMode"_s), false);
    }

    void unconfirmingTheAgeWithdrawsConsentAndSendsOnce()
    {
        World world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}, {u"appSignalConsent"_s, true}});

        world.state->ageConfirmed = false;

        QVERIFY(!world.state->appSignalConsent());
        QCOMPARE(world.platform.settings.writes, (QStringList {u"ageConfirmed"_s, u"appSignalConsent"_s}));
        QCOMPARE(world.sent(), std::vector {preferences(false, false, false)});
    }

    void unconfirmingTheAgeWithoutConsentSendsNothing()
    {
        World world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}});

        world.state->ageConfirmed = false;

        QCOMPARE(world.stored(u"ageConfirmed"_s), false);
        QVERIFY(world.sent().empty());
    }

    void confirmingTheAgeIsStoredAndNotSent()
    {
        World world;

        world.state->ageConfirmed = true;

        QCOMPARE(world.stored(u"ageConfirmed"_s), true);
        QVERIFY(world.sent().empty());
    }

    void anEqualValueIsStoredAndSentTooWhenAssigned()
    {
        World world;

        world.state->autoOpenAds = false;
        world.state->anonymousMode = true;

        QCOMPARE(world.platform.settings.writes, (QStringList {u"autoOpenAds"_s, u"anonymousMode"_s}));
        QCOMPARE(world.sent().size(), 2U);
    }

    void theStartupWindowSwitchIsStoredAndNotSent()
    {
        World world;

        world.state->showLaunchWindowAtStartup = false;

        QCOMPARE(world.stored(u"showLaunchWindowAtStartup"_s), false);
        QVERIFY(world.sent().empty());
    }

    void theValuesSentAreThoseOfTheMomentTheTaskRuns()
    {
        World world;

        world.state->autoOpenAds = true;
        world.state->autoOpenAds = false;
        world.state->autoOpenAds = true;

        QVERIFY(world.transport.requests().empty());
        QCOMPARE(world.sent(),
            (std::vector {
                preferences(true, false, true), preferences(true, false, true), preferences(true, false, true)}));
    }

    void overlappingRequestsMayEndInAnyOrder()
    {
        World world;
        auto first = world.transport.hold(endpoints::kPreferences);
        world.state->autoOpenAds = true;
        settle();
        auto second = world.transport.hold(endpoints::kPreferences);
        world.state->autoOpenAds = false;
        settle();

        second.answer(200, EmptyPayload());
        first.give(failed(Failure::Kind::unreachable, u"No network."_s));

        QCOMPARE(world.state->lastError(), u"No network."_s);
        QVERIFY(!world.state->autoOpenAds());
    }

    void aFailedRequestKeepsWhatTheViewerSet()
    {
        World world;
        world.transport.fail(endpoints::kPreferences, u"No network."_s);

        world.state->anonymousMode = false;
        settle();

        QVERIFY(!world.state->anonymousMode());
        QCOMPARE(world.stored(u"anonymousMode"_s), false);
        QCOMPARE(world.state->lastError(), u"No network."_s);
    }

    void aSuccessfulRequestClearsTheLastError()
    {
        World world;
        world.state->lastError = u"old"_s;

        world.state->autoOpenAds = true;
        settle();

        QVERIFY(!world.state->lastError());
    }
};

QTEST_GUILESS_MAIN(PreferencesTest)

#include "PreferencesTest.moc"
