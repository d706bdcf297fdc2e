#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QSignalSpy>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class AppStateTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aFreshUserGetsTheDefaults()
    {
        FakePlatform platform;
        FakeTransport transport;

        const AppState state(platform.lend(), transport);

        QVERIFY(state.anonymousMode());
        QVERIFY(!state.appSignalConsent());
        QVERIFY(!state.ageConfirmed());
        QVERIFY(!state.autoOpenAds());
        QVERIFY(state.showLaunchWindowAtStartup());
    }

    void aNewStateShowsNothingYet()
    {
        FakePlatform platform;
        FakeTransport transport;

        const AppState state(platform.lend(), transport);

        QCOMPARE(state.availableCents(), 0);
        QCOMPARE(state.pendingCents(), 0);
        QCOMPARE(state.paidCents(), 0);
        QCOMPARE(state.lifetimeCents(), 0);
        QVERIFY(!state.lastEarnedCents());
        QVERIFY(!state.availableAd());
        QVERIFY(!state.linked());
        QVERIFY(!state.activationCode());
        QVERIFY(!state.verificationUri());
        QVERIFY(!state.lastError());
        QCOMPARE(state.statusTitle(), u"$0.00"_s);
        QCOMPARE(state.pollSeconds(), 300);
    }

    void keptSettingsAreLoaded()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"anonymousMode"_s, false}, {u"appSignalConsent"_s, true},
            {u"ageConfirmed"_s, true}, {u"autoOpenAds"_s, true}, {u"showLaunchWindowAtStartup"_s, false}};

        const AppState state(platform.lend(), transport);

        QVERIFY(!state.anonymousMode());
        QVERIFY(state.appSignalConsent());
        QVERIFY(state.ageConfirmed());
        QVERIFY(state.autoOpenAds());
        QVERIFY(!state.showLaunchWindowAtStartup());
    }

    void aKeptValueOfAnotherTypeCountsAsMissing()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"anonymousMode"_s, u"no"_s}, {u"autoOpenAds"_s, qint64 {1}},
            {u"showLaunchWindowAtStartup"_s, u"false"_s}};

        const AppState state(platform.lend(), transport);

        QVERIFY(state.anonymousMode());
        QVERIFY(!state.autoOpenAds());
        QVERIFY(state.showLaunchWindowAtStartup());
    }

    void constructionWritesNoSettingsBackAndSendsNothing()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"appSignalConsent"_s, true}};

        const AppState state(platform.lend(), transport);
        settle();

        QCOMPARE(platform.settings.writes, QStringList {u"didConfigureLaunchAtLogin"_s});
        QVERIFY(transport.requests().empty());
    }

    void aKeptConsentWithoutConfirmedAgeStaysUntilASettingIsAssigned()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"appSignalConsent"_s, true}};
        AppState state(platform.lend(), transport);
        QVERIFY(state.appSignalConsent());

        state.ageConfirmed = false;

        QVERIFY(!state.appSignalConsent());
    }

    void theFirstRunRegistersTheLoginItem()
    {
        FakePlatform platform;
        FakeTransport transport;

        const AppState state(platform.lend(), transport);

        QCOMPARE(platform.loginItem.registrations, 1);
        QVERIFY(state.launchAtLogin());
        QCOMPARE(platform.settings.boolean(u"didConfigureLaunchAtLogin"_s), true);
    }

    void theFirstRunLeavesALoginItemAloneThatTheUserHasSwitchedOff()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.loginItem.current = LoginItem::Status::requiresApproval;

        const AppState state(platform.lend(), transport);

        QCOMPARE(platform.loginItem.registrations, 0);
        QVERIFY(!state.launchAtLogin());
        QCOMPARE(platform.settings.boolean(u"didConfigureLaunchAtLogin"_s), true);
    }

    void launchAtLoginIsReadAgainWhenAskedTo()
    {
        FakePlatform platform;
        FakeTransport transport;
        AppState state(platform.lend(), transport);
        QVERIFY(state.launchAtLogin());

        platform.loginItem.current = LoginItem::Status::requiresApproval;
        QVERIFY(state.launchAtLogin());
        state.refreshLaunchAtLogin();

        QVERIFY(!state.launchAtLogin());
    }

    void laterRunsDoNotRegisterALoginItemThatTheUserRemoved()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"didConfigureLaunchAtLogin"_s, true}};

        const AppState state(platform.lend(), transport);

        QCOMPARE(platform.loginItem.registrations, 0);
        QVERIFY(!state.launchAtLogin());
    }

    void aFailedFirstRegistrationIsIgnoredAndNotTriedAgain()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.loginItem.failure = Failure {Failure::Kind::refused, u"No."_s};

        const AppState first(platform.lend(), transport);
        const AppState second(platform.lend(), transport);

        QCOMPARE(platform.loginItem.registrations, 1);
        QVERIFY(!first.launchAtLogin());
        QVERIFY(!first.lastError());
        QCOMPARE(platform.settings.boolean(u"didConfigureLaunchAtLogin"_s), true);
    }

    void onlyAnEnabledLoginItemCounts_data()
    {
        QTest::addColumn<LoginItem::Status>("status");
        QTest::addColumn<bool>("expected");

        QTest::newRow("enabled") << LoginItem::Status::enabled << true;
        QTest::newRow("requires approval") << LoginItem::Status::requiresApproval << false;
        QTest::newRow("not registered") << LoginItem::Status::notRegistered << false;
        QTest::newRow("not found") << LoginItem::Status::notFound << false;
    }

    void onlyAnEnabledLoginItemCounts()
    {
        QFETCH(LoginItem::Status, status);
        QFETCH(bool, expected);
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"didConfigureLaunchAtLogin"_s, true}};
        platform.loginItem.current = status;

        const AppState state(platform.lend(), transport);

        QCOMPARE(state.launchAtLogin(), expected);
    }

    void anAnswerThatComesLaterSetsLaunchAtLoginAgain()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"didConfigureLaunchAtLogin"_s, true}};
        AppState state(platform.lend(), transport);
        platform.loginItem.isSlow = true;

        state.setLaunchAtLogin(true);
        QVERIFY(!state.launchAtLogin());

        platform.loginItem.current = LoginItem::Status::enabled;
        platform.loginItem.answered({});
        QVERIFY(state.launchAtLogin());
        QVERIFY(!state.lastError());

        platform.loginItem.current = LoginItem::Status::requiresApproval;
        platform.loginItem.answered(failed(Failure::Kind::refused, u"no"_s));
        QVERIFY(!state.launchAtLogin());
        QCOMPARE(state.lastError(), u"no"_s);
    }

    void aLateRefusalOfTheFirstRunsRegistrationIsNotTold()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.loginItem.isSlow = true;
        AppState state(platform.lend(), transport);
        QCOMPARE(platform.loginItem.registrations, 1);

        platform.loginItem.answered(failed(Failure::Kind::refused, u"no"_s));
        QVERIFY(!state.lastError());
        QVERIFY(!state.launchAtLogin());

        platform.loginItem.current = LoginItem::Status::enabled;
        platform.loginItem.answered({});
        QVERIFY(state.launchAtLogin());
    }

    void anAnswerAfterTheEndOfTheStateIsLost()
    {
        FakePlatform platform;
        FakeTransport transport;
        {
            const AppState state(platform.lend(), transport);
        }

        platform.loginItem.answered({});
    }

    void settingLaunchAtLoginRegistersAndReportsTheRealState()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"didConfigureLaunchAtLogin"_s, true}};
        AppState state(platform.lend(), transport);
        state.lastError = u"old"_s;

        state.setLaunchAtLogin(true);

        QCOMPARE(platform.loginItem.registrations, 1);
        QVERIFY(state.launchAtLogin());
        QVERIFY(!state.lastError());

        state.setLaunchAtLogin(false);

        QCOMPARE(platform.loginItem.unregistrations, 1);
        QVERIFY(!state.launchAtLogin());
        QVERIFY(platform.settings.writes.isEmpty());
    }

    void aFailedLoginItemChangeIsReportedAndTheStateIsTheSystems()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.settings.values = {{u"didConfigureLaunchAtLogin"_s, true}};
        AppState state(platform.lend(), transport);
        platform.loginItem.failure = Failure {Failure::Kind::refused, u"No."_s};

        state.setLaunchAtLogin(true);

        QCOMPARE(state.lastError(), u"No."_s);
        QVERIFY(!state.launchAtLogin());
    }

    void aLoginItemThatCannotBeTakenAwayStaysOn()
    {
        FakePlatform platform;
        FakeTransport transport;
        AppState state(platform.lend(), transport);
        platform.loginItem.failure = Failure {Failure::Kind::refused, u"No."_s};

        state.setLaunchAtLogin(false);

        QCOMPARE(state.lastError(), u"No."_s);
        QVERIFY(state.launchAtLogin());
    }

    void everyAssignmentIsAnnouncedEqualValueOrNot()
    {
        FakePlatform platform;
        FakeTransport transport;
        AppState state(platform.lend(), transport);
        const QSignalSpy spy(&state, &Observable::willChange);

        state.availableCents = 0;
        state.statusTitle = u"$0.00"_s;
        state.showLaunchWindowAtStartup = true;

        QCOMPARE(spy.count(), 3);
    }

    void aStateThatGoesAwayWhileTheKeyringIsLockedDoesNothingMore()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.secrets.isLocked = true;
        auto state = std::make_unique<AppState>(platform.lend(), transport);
        state->bootstrap();
        settle();

        state.reset();
        platform.secrets.unlock();
        settle();

        QVERIFY(transport.requests().empty());
        QCOMPARE(platform.secrets.operations, QStringList {u"read orvella.device-token"_s});
    }

    void aStateThatGoesAwayLeavesNothingWaiting()
    {
        FakePlatform platform;
        FakeTransport transport;
        platform.secrets.put(Keychain::kService, "token");
        transport.answerEverything();
        const auto wallet = transport.hold(u"/api/mac/wallet"_s);
        auto state = std::make_unique<AppState>(platform.lend(), transport);
        state->bootstrap();
        settle();
        QVERIFY(wallet.isAwaited());

        state.reset();
        settle();

        QCOMPARE(transport.waiting(), 0);
        QCOMPARE(platform.clock.sleepers(), 0U);
        QCOMPARE(transport.paths(), QStringList {u"/api/mac/wallet"_s});
    }
};

QTEST_GUILESS_MAIN(AppStateTest)

#include "AppStateTest.moc"
