#include "ui/LaunchWindowController.h"

#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "ui/MenuPopoverView.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QLabel>
#include <QScreen>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppState> state;
    Look look {platform.look};
    std::unique_ptr<LaunchWindowController> controller;

    explicit World(const QString& service = u"https://service.test/"_s)
    {
        platform.settings.values = {{u"apiBaseURL"_s, service}};
        transport.answerEverything();
        state = std::make_unique<AppState>(platform.lend(), transport);
        controller = std::make_unique<LaunchWindowController>(look, *state, platform.lend());
        controller->show();
        settle();
    }

    [[nodiscard]] QWidget& window() const { return controller->window(); }

    [[nodiscard]] QAbstractButton* button(const QString& name) const
    {
        return window().findChild<QAbstractButton*>(name);
    }

    [[nodiscard]] QString text(const QString& name) const
    {
        const auto* const label = window().findChild<QLabel*>(name);
        return label ? label->text() : QString();
    }

    void click(const QString& name)
    {
        QTest::mouseClick(button(name), Qt::LeftButton);
        settle();
    }
};

} // namespace

class LaunchWindowTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itIsATitledWindowOf560By620PointsInTheMiddle()
    {
        World world;

        QCOMPARE(world.window().size(), QSize(560, 620));
        QCOMPARE(world.window().windowTitle(), u"Orvella"_s);
        QCOMPARE(world.window().minimumSize(), world.window().maximumSize());
        const auto flags = world.window().windowFlags();
        QVERIFY(flags.testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(flags.testFlag(Qt::WindowMinimizeButtonHint));
        QVERIFY(!flags.testFlag(Qt::WindowMaximizeButtonHint));
        const auto middle = QGuiApplication::primaryScreen()->availableGeometry().center();
        QCOMPARE(world.window().pos() + world.window().rect().center(), middle);
        QCOMPARE(world.platform.windows.activated.size(), 1U);
    }

    void itSaysWhereToLookAndWhatTheSettingsMean()
    {
        World world;
        QStringList texts;
        for (const auto* const label : world.window().findChildren<QLabel*>())
            texts.append(label->text());

        for (const auto& text : {u"Orvella is running"_s, u"The app lives in your Mac menu bar and opens at login."_s,
                 u"Look for $ in the top bar."_s, u"When it changes to green $ AD, an ad is available."_s,
                 u"Click $ to open the ad. Auto open still works even if macOS hides it."_s,
                 u"Orvella keeps $ pinned near the right side of the menu bar. If macOS moves it after a display "
                 "change, reopening Orvella restores the placement."_s,
                 u"Ad delivery"_s, u"Manual mode still works: the $ icon changes when an ad is ready."_s, u"Privacy"_s,
                 u"Turning this off only hides this startup window. Orvella will still open in the menu bar and keep "
                 "checking for ads."_s})
            QVERIFY2(texts.contains(text), qPrintable(text));
    }

    void theBoxesAssignTheSettings_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("key");
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("help");
        QTest::addColumn<bool>("before");
        QTest::newRow("auto open")
            << u"autoOpenAds"_s << u"autoOpenAds"_s << u"Auto open ads when available"_s
            << u"When enabled, Orvella opens the ad popup automatically when a qualified ad is available. When "
               "disabled, the menu bar icon turns green and waits for your click."_s
            << false;
        QTest::newRow("anonymous") << u"anonymousMode"_s << u"anonymousMode"_s << u"Anonymous mode"_s
                                   << u"Anonymous mode sends no app-category signals. You can still see ads, but "
                                      "matching is less personalized."_s
                                   << true;
        QTest::newRow("age") << u"ageConfirmed"_s << u"ageConfirmed"_s << u"I am 18 or older"_s
                             << u"Ads and earnings are only available for viewers who confirm they are at least 18."_s
                             << false;
        QTest::newRow("window")
            << u"showLaunchWindow"_s << u"showLaunchWindowAtStartup"_s << u"Show this window when Orvella starts"_s
            << u"Controls only this startup window. Orvella still runs in the menu bar when this is off."_s << true;
    }

    void theBoxesAssignTheSettings()
    {
        QFETCH(const QString, name);
        QFETCH(const QString, key);
        QFETCH(const QString, text);
        QFETCH(const QString, help);
        QFETCH(const bool, before);
        World world;
        QCOMPARE(world.button(name)->isChecked(), before);
        QCOMPARE(world.button(name)->text(), text);
        QCOMPARE(world.button(name)->toolTip(), help);

        world.click(name);

        QCOMPARE(world.platform.settings.values.at(key), Json(!before));
        QCOMPARE(world.button(name)->isChecked(), !before);
    }

    void assistiveTechnologyAssignsThemToo()
    {
        World world;

        QAccessible::queryAccessibleInterface(world.button(u"autoOpenAds"_s))
            ->actionInterface()
            ->doAction(QAccessibleActionInterface::toggleAction());
        settle();

        QVERIFY(world.state->autoOpenAds());
    }

    void turningAnonymousModeOnClosesTheConsentHereAndInTheMenu()
    {
        World world;
        world.state->anonymousMode = false;
        world.state->ageConfirmed = true;
        world.state->appSignalConsent = true;
        settle();
        MenuPopoverView menu(world.look, *world.state, world.platform.lend(), {[] {}, [] {}});
        menu.show();
        QVERIFY(world.button(u"appSignalConsent"_s)->isEnabled());
        QVERIFY(world.button(u"appSignalConsent"_s)->isChecked());
        QCOMPARE(world.text(u"consentHint"_s), QString());
        QCOMPARE(world.text(u"categoriesNote"_s),
            u"We send broad categories like Developer tools or Design tools, never raw app names."_s);

        world.click(u"anonymousMode"_s);

        QVERIFY(!world.button(u"appSignalConsent"_s)->isEnabled());
        QVERIFY(!world.button(u"appSignalConsent"_s)->isChecked());
        QCOMPARE(
            world.button(u"appSignalConsent"_s)->toolTip(), u"Turn off Anonymous mode to enable category signals."_s);
        QCOMPARE(world.text(u"consentHint"_s), u"Turn off Anonymous mode to use category signals."_s);
        QCOMPARE(world.text(u"categoriesNote"_s), u"Anonymous mode sends no app categories."_s);
        QVERIFY(menu.findChild<QAbstractButton*>(u"anonymousMode"_s)->isChecked());
        QVERIFY(!menu.findChild<QAbstractButton*>(u"appSignalConsent"_s)->isEnabled());
    }

    void withoutAConfirmedAgeTheConsentAsksForIt()
    {
        World world;

        world.state->anonymousMode = false;
        settle();

        QVERIFY(!world.button(u"appSignalConsent"_s)->isEnabled());
        QCOMPARE(world.text(u"consentHint"_s), u"Confirm you are 18 or older to use category signals."_s);
    }

    void returnClosesItWhereverTheKeyboardIs_data()
    {
        QTest::addColumn<QString>("focused");
        QTest::newRow("nowhere") << QString();
        QTest::newRow("on a box") << u"anonymousMode"_s;
        QTest::newRow("on Quit") << u"quit"_s;
    }

    void returnClosesItWhereverTheKeyboardIs()
    {
        QFETCH(const QString, focused);
        World world;
        QApplication::setActiveWindow(&world.window());
        auto* const target = focused.isEmpty() ? &world.window() : static_cast<QWidget*>(world.button(focused));
        target->setFocus();

        QTest::keyClick(target, Qt::Key_Return);

        QVERIFY(!world.window().isVisible());
        QVERIFY(world.state->anonymousMode());
    }

    void gotItClosesAndStoresNothing()
    {
        World world;
        world.platform.settings.writes.clear();

        world.click(u"gotIt"_s);

        QVERIFY(!world.window().isVisible());
        QVERIFY(world.platform.settings.writes.isEmpty());
    }

    void escapeClosesItToo()
    {
        World world;

        QTest::keyClick(&world.window(), Qt::Key_Escape);

        QVERIFY(!world.window().isVisible());
    }

    void shownAgainItIsTheSameWindowWithTheStateOfNow()
    {
        World world;
        auto* const before = &world.window();
        world.click(u"gotIt"_s);
        world.state->showLaunchWindowAtStartup = false;
        settle();

        world.controller->show();

        QCOMPARE(&world.window(), before);
        QVERIFY(world.window().isVisible());
        QVERIFY(!world.button(u"showLaunchWindow"_s)->isChecked());
        QCOMPARE(world.platform.windows.activated.size(), 2U);
    }

    void aMinimisedWindowComesBack()
    {
        World world;
        world.window().showMinimized();

        world.controller->show();

        QVERIFY(!world.window().isMinimized());
    }

    void theDashboardOpensAndTheWindowStays_data()
    {
        QTest::addColumn<QString>("service");
        QTest::addColumn<QUrl>("page");
        QTest::newRow("a host") << u"https://service.test/"_s << QUrl(u"https://service.test/viewer"_s);
        QTest::newRow("a port") << u"http://127.0.0.1:8787"_s << QUrl(u"http://127.0.0.1:8787/viewer"_s);
        QTest::newRow("a path") << u"https://service.test/v2/"_s << QUrl(u"https://service.test/viewer"_s);
    }

    void theDashboardOpensAndTheWindowStays()
    {
        QFETCH(const QString, service);
        QFETCH(const QUrl, page);
        World world(service);

        world.click(u"openDashboard"_s);

        QCOMPARE(world.platform.browser.opened, std::vector {page});
        QVERIFY(world.window().isVisible());
    }

    void quitEndsTheProgram()
    {
        World world;

        QMetaObject::invokeMethod(qApp, [&world] { world.click(u"quit"_s); }, Qt::QueuedConnection);

        QCOMPARE(QApplication::exec(), 0);
    }

    void theKeyboardSetsEverySetting()
    {
        World world;

        for (const auto& name :
            {u"anonymousMode"_s, u"ageConfirmed"_s, u"appSignalConsent"_s, u"autoOpenAds"_s, u"showLaunchWindow"_s}) {
            QTest::keyClick(world.button(name), Qt::Key_Space);
            settle();
        }

        QVERIFY(!world.state->anonymousMode());
        QVERIFY(world.state->ageConfirmed());
        QVERIFY(world.state->appSignalConsent());
        QVERIFY(world.state->autoOpenAds());
        QVERIFY(!world.state->showLaunchWindowAtStartup());
    }

    void itsTabOrderIsTopToBottomThenTheButtons()
    {
        World world;
        QStringList order;
        const QWidget* widget = &world.window();
        do {
            if (widget->focusPolicy() == Qt::TabFocus && widget->isEnabled())
                order.append(widget->objectName());
            widget = widget->nextInFocusChain();
        } while (widget != &world.window());

        QCOMPARE(order,
            (QStringList {u"autoOpenAds"_s, u"anonymousMode"_s, u"ageConfirmed"_s, u"showLaunchWindow"_s,
                u"openDashboard"_s, u"quit"_s, u"gotIt"_s}));
    }

    void largerTextGrowsItInHeightOnly()
    {
        World world;

        world.platform.look.scale = 1.5;
        world.platform.look.changed();
        settle();

        QCOMPARE(world.window().width(), 560);
        QVERIFY(world.window().height() > 620);
    }
};

QTEST_MAIN(LaunchWindowTest)

#include "LaunchWindowTest.moc"
