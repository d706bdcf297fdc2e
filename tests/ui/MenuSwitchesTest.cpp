#include "ui/MenuWorld.h"

#include <QAccessible>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString kAnonymousHelp = u"Turn off Anonymous mode to enable category signals."_s;
const QString kAgeHelp = u"Confirm you are 18 or older before enabling category signals."_s;

} // namespace

/// The switches of the menu, and what they do to the settings.
class MenuSwitchesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void switchesAreDeafForAMomentAfterAnOfferMovedThem()
    {
        MenuWorld world;
        world.offer();

        world.platform.clock.advance(299ms);
        world.click(u"autoOpenAds"_s);
        QVERIFY(!world.state->autoOpenAds());

        world.platform.clock.advance(1ms);
        world.click(u"autoOpenAds"_s);
        QVERIFY(world.state->autoOpenAds());
    }

    void anotherTextOfTheOfferMovesNothing()
    {
        MenuWorld world;
        world.offer();
        world.platform.clock.advance(1s);
        auto ad = anAd();
        ad.body = u"Another"_s;
        world.state->availableAd = ad;
        settle();

        world.click(u"autoOpenAds"_s);

        QVERIFY(world.state->autoOpenAds());
    }

    void theSwitchesAssignTheSettings_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("key");
        QTest::addColumn<bool>("before");
        for (const auto& [name, before] :
            {std::pair(u"autoOpenAds"_s, false), {u"anonymousMode"_s, true}, {u"ageConfirmed"_s, false}})
            QTest::newRow(qPrintable(name)) << name << name << before;
        QTest::newRow("startup window") << u"showLaunchWindow"_s << u"showLaunchWindowAtStartup"_s << true;
    }

    void theSwitchesAssignTheSettings()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, key);
        QFETCH(const bool, before);
        MenuWorld world;
        QCOMPARE(world.button(name)->isChecked(), before);

        world.click(name);

        QCOMPARE(world.platform.settings.values.at(key), Json(!before));
        QCOMPARE(world.button(name)->isChecked(), !before);
    }

    void theKeyboardReachesAndAssignsThemToo()
    {
        MenuWorld world;
        auto* const row = world.button(u"autoOpenAds"_s);
        QCOMPARE(row->focusPolicy(), Qt::TabFocus);

        QTest::keyClick(row, Qt::Key_Space);
        settle();

        QVERIFY(world.state->autoOpenAds());
    }

    void assistiveTechnologyAssignsThemToo()
    {
        MenuWorld world;

        QAccessible::queryAccessibleInterface(world.button(u"autoOpenAds"_s))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::toggleAction());
        settle();

        QVERIFY(world.state->autoOpenAds());
    }

    void consentFollowsAnonymousModeAndAge_data()
    {
        QTest::addColumn<bool>("anonymous");
        QTest::addColumn<bool>("adult");
        QTest::addColumn<bool>("enabled");
        QTest::addColumn<QString>("help");
        QTest::addColumn<QString>("hint");
        QTest::addColumn<QString>("note");

        const auto anonymousHint = u"Turn off Anonymous mode to use category signals."_s;
        const auto anonymousNote = u"Anonymous mode sends no app categories."_s;
        const auto note = u"Category signals send broad labels only."_s;
        QTest::newRow("anonymous") << true << false << false << kAnonymousHelp << anonymousHint << anonymousNote;
        QTest::newRow("anonymous adult") << true << true << false << kAnonymousHelp << anonymousHint << anonymousNote;
        QTest::newRow("age unknown") << false << false << false << kAgeHelp
                                     << u"Confirm you are 18 or older to use category signals."_s << note;
        QTest::newRow("open")
            << false << true << true
            << u"Sends broad app categories, never raw app names, so ad matching can be more relevant."_s << QString()
            << note;
    }

    void consentFollowsAnonymousModeAndAge()
    {
        QFETCH(const bool, anonymous);
        QFETCH(const bool, adult);
        QFETCH(const bool, enabled);
        QFETCH(const QString, help);
        QFETCH(const QString, hint);
        QFETCH(const QString, note);
        MenuWorld world;

        world.state->anonymousMode = anonymous;
        world.state->ageConfirmed = adult;
        settle();

        const auto* const consent = world.button(u"appSignalConsent"_s);
        QCOMPARE(consent->isEnabled(), enabled);
        QCOMPARE(consent->toolTip(), help);
        QCOMPARE(consent->accessibleDescription(), help);
        QCOMPARE(world.has(u"consentHint"_s), !hint.isEmpty());
        QCOMPARE(world.text(u"consentHint"_s), hint);
        QCOMPARE(world.text(u"anonymousNote"_s), note);
    }

    void consentThatTheStateTakesBackShowsAsOff()
    {
        MenuWorld world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}, {u"appSignalConsent"_s, true}});
        QVERIFY(world.button(u"appSignalConsent"_s)->isChecked());

        world.click(u"anonymousMode"_s);

        QVERIFY(!world.button(u"appSignalConsent"_s)->isChecked());
        QCOMPARE(world.platform.settings.values.at(u"appSignalConsent"_s), Json(false));
    }

    void consentThatStandsInAnonymousModeIsShownAsItIs()
    {
        MenuWorld world({{u"anonymousMode"_s, true}, {u"ageConfirmed"_s, true}, {u"appSignalConsent"_s, true}});

        QVERIFY(world.button(u"appSignalConsent"_s)->isChecked());
        QVERIFY(!world.button(u"appSignalConsent"_s)->isEnabled());
    }

    void openAtLoginAsksTheSystemOnce()
    {
        MenuWorld world;

        world.click(u"openAtLogin"_s);

        QCOMPARE(world.platform.loginItem.registrations, 1);
        QVERIFY(world.button(u"openAtLogin"_s)->isChecked());
        QVERIFY(world.state->launchAtLogin());
    }

    void openAtLoginThatTheSystemRefusesGoesBack()
    {
        MenuWorld world;
        world.platform.loginItem.failure = Failure {Failure::Kind::refused, u"The folder cannot be written."_s};

        world.click(u"openAtLogin"_s);

        QCOMPARE(world.platform.loginItem.registrations, 1);
        QVERIFY(!world.button(u"openAtLogin"_s)->isChecked());
        QCOMPARE(world.text(u"error"_s), u"The folder cannot be written."_s);
    }

    void theHelpOfEachSwitchIsItsTooltip_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("help");
        QTest::newRow("auto open")
            << u"autoOpenAds"_s
            << u"Automatically opens the ad popup when an ad is ready. If off, click the green $ AD icon manually."_s;
        QTest::newRow("anonymous")
            << u"anonymousMode"_s
            << u"Sends no app-category signals. You can still earn, but ads are matched with less context."_s;
        QTest::newRow("age") << u"ageConfirmed"_s
                             << u"Required before category signals and paid ad viewing are enabled."_s;
        QTest::newRow("login") << u"openAtLogin"_s << u"Starts Orvella automatically when you log in to your Mac."_s;
        QTest::newRow("startup")
            << u"showLaunchWindow"_s
            << u"Controls the larger intro/settings window. Orvella still runs in the menu bar when this is off."_s;
        QTest::newRow("updates") << u"checkForUpdates"_s << u"Checks Sparkle for the latest Orvella Mac update."_s;
    }

    void theHelpOfEachSwitchIsItsTooltip()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, help);

        QCOMPARE(MenuWorld().button(name)->toolTip(), help);
    }
};

QTEST_MAIN(MenuSwitchesTest)

#include "MenuSwitchesTest.moc"
