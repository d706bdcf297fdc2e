#include "api/Endpoints.h"
#include "app/AppDelegate.h"
#include "platform/StatusItem.h"
#include "platform/SystemPlatform.h"
#include "platform/linux/PanelTone.h"
#include "support/FakeClock.h"
#include "support/FakeTransport.h"
#include "support/PlainEditor.h"
#include "support/Samples.h"
#include "support/VirtualDesktop.h"
#include "ui/popover/Popover.h"

#include <QAbstractButton>
#include <QApplication>
#include <QPalette>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 15'000;
/// Longer than anything that may still happen.
constexpr int kSettledMs = 600;
/// In pixels, with a little of what is below the panel.
constexpr int kPanelHeight = 40;
constexpr QPoint kBareDesktop {300, 650};

Popover* popover(const QString& name)
{
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name && window->isVisible())
            return qobject_cast<Popover*>(window);
    }
    return nullptr;
}

Popover* menu()
{
    return popover(u"menuPanel"_s);
}

Popover* adPanel()
{
    return popover(u"adPanel"_s);
}

/// Waits until the window is on the screen where it says it is, with everything in it in its place.
bool settles(Popover& popover)
{
    const auto* const content = popover.findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
    const bool isThere = QTest::qWaitForWindowExposed(&popover)
        && QTest::qWaitFor([&] { return content->mapToGlobal(QPoint()) == popover.contentRect().topLeft(); });
    QTest::qWait(kSettledMs);
    return isThere;
}

bool type(const QString& keys)
{
    return VirtualDesktop::run(u"xdotool"_s, {u"type"_s, u"--delay"_s, u"20"_s, keys});
}

bool press(const QString& key)
{
    return VirtualDesktop::run(u"xdotool"_s, {u"key"_s, key});
}

std::optional<QPoint> find(StatusAppearance::Tone tone)
{
    const QRect panel(0, 0, QGuiApplication::primaryScreen()->size().width(), kPanelHeight);
    const auto found = VirtualDesktop::find(VirtualDesktop::screenshot(panel), statusColour(tone, PanelTone::light));
    return found ? std::optional(found->center()) : std::nullopt;
}

} // namespace

/// The program's own objects in a real panel, under a real window manager, with a real pointer and a real keyboard;
/// only the service is played.
class FaceOnPanelTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        // The panel of this desktop is light; without a settings service no palette says so.
        QPalette palette = QGuiApplication::palette();
        palette.setColor(QPalette::Window, Qt::white);
        QGuiApplication::setPalette(palette);
    }

    void init()
    {
        // Two clicks in a row would be a double one.
        QTest::qWait(QApplication::doubleClickInterval());
        m_profile = std::make_unique<QTemporaryDir>();
        m_transport = std::make_unique<FakeTransport>();
        m_transport->answerEverything();
    }

    void cleanup()
    {
        m_delegate.reset();
        m_platform.reset();
    }

    void aClickOpensTheMenuUnderTheItemAndASecondOneClosesIt()
    {
        launch();
        const auto item = waitForItem();
        QVERIFY(item);

        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(menu(), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), menu(), kPatienceMs);
        QVERIFY(settles(*menu()));
        const auto content = menu()->contentRect();
        const auto work = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(content.top(), work.top() + 2 + kArrowHeight);
        QVERIFY(content.right() <= work.right() - 8);

        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
        QTest::qWait(kSettledMs);
        QVERIFY(!menu());

        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(menu(), kPatienceMs);
    }

    void aClickOnTheBareDesktopClosesTheMenu()
    {
        openMenu();

        QVERIFY(VirtualDesktop::click(kBareDesktop));

        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
    }

    void aClickInAnotherWindowClosesTheMenuAndIsThatWindowsClick()
    {
        PlainEditor editor;
        QVERIFY(editor.start({100, 300, 300, 200}));
        openMenu();

        QVERIFY(VirtualDesktop::click({200, 400}));

        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
        QVERIFY(type(u"typed"_s));
        QTRY_COMPARE_WITH_TIMEOUT(editor.text(), u"typed"_s, kPatienceMs);
    }

    void aClickElsewhereInThePanelClosesTheMenu()
    {
        openMenu();

        QVERIFY(VirtualDesktop::click({300, 10}));

        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
    }

    void escapeClosesTheMenu()
    {
        openMenu();

        QVERIFY(press(u"Escape"_s));

        QTRY_VERIFY_WITH_TIMEOUT(!menu(), kPatienceMs);
    }

    void theKeyboardSetsEverySetting()
    {
        openMenu();

        QVERIFY(press(u"Tab"_s));
        QVERIFY(press(u"space"_s));
        QTRY_VERIFY_WITH_TIMEOUT(state().autoOpenAds(), kPatienceMs);
        QVERIFY(press(u"Tab"_s));
        QVERIFY(press(u"space"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!state().anonymousMode(), kPatienceMs);
    }

    void aRealClickTogglesASwitch()
    {
        openMenu();
        QVERIFY(settles(*menu()));
        const auto* const row = menu()->findChild<QAbstractButton*>(u"autoOpenAds"_s);

        QVERIFY(VirtualDesktop::click(row->mapToGlobal(row->rect().center())));

        QTRY_VERIFY_WITH_TIMEOUT(state().autoOpenAds(), kPatienceMs);
        QVERIFY(menu());
    }

    void anAdThatOpensByItselfLeavesTheKeyboardWithTheEditor()
    {
        PlainEditor editor;
        QVERIFY(editor.start({100, 300, 400, 300}));
        launch();
        state().autoOpenAds = true;
        QVERIFY(VirtualDesktop::click({200, 400}));
        QVERIFY(type(u"before "_s));
        QTRY_COMPARE_WITH_TIMEOUT(editor.text(), u"before "_s, kPatienceMs);

        state().availableAd = anAd();
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);
        QVERIFY(type(u"and after "_s));
        QVERIFY(press(u"Return"_s));
        QVERIFY(press(u"Escape"_s));

        QTRY_COMPARE_WITH_TIMEOUT(editor.text(), u"before and after \n"_s, kPatienceMs);
        QVERIFY(adPanel());
        QVERIFY(!QApplication::activeWindow());
        // It is where the item is, where the panel says so, else in the corner.
        const auto work = QGuiApplication::primaryScreen()->availableGeometry();
        const auto distance = m_platform->lend().statusItem.place() ? 2 + kArrowHeight : 8;
        QTRY_COMPARE(adPanel()->contentRect().topRight(), QPoint(work.right() - 8, work.top() + distance));
    }

    void aClickIntoAnAdThatOpenedByItselfReachesWhatIsThere()
    {
        launch();
        state().autoOpenAds = true;
        state().availableAd = anAd();
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);
        QVERIFY(settles(*adPanel()));
        const auto* const close = adPanel()->findChild<QAbstractButton*>(u"close"_s);

        QVERIFY(VirtualDesktop::click(close->mapToGlobal(close->rect().center())));

        QTRY_VERIFY_WITH_TIMEOUT(!adPanel(), kPatienceMs);
        QVERIFY(!state().availableAd());
    }

    void aClickOnAGreenItemOpensTheAdWithTheKeyboardButNoKeyDoesAnythingYet()
    {
        m_transport->answer(endpoints::kAdsAvailable, anOffer());
        launch();
        const auto item = waitForGreen();
        QVERIFY(item);

        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), adPanel(), kPatienceMs);
        QVERIFY(press(u"space"_s));
        QVERIFY(press(u"Return"_s));
        QTest::qWait(kSettledMs);
        QVERIFY(adPanel());
        QVERIFY(state().availableAd());

        // The third control is the way out.
        for (int step = 0; step < 3; ++step)
            QVERIFY(press(u"Tab"_s));
        QVERIFY(press(u"space"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!adPanel(), kPatienceMs);
    }

    void aClickOnTheItemWhileAnAdIsShownDoesNotEvenCloseTheMenu()
    {
        openMenu();
        state().availableAd = anAd();
        QTRY_VERIFY_WITH_TIMEOUT(menu()->findChild<QAbstractButton*>(u"openAd"_s), kPatienceMs);
        menu()->findChild<QAbstractButton*>(u"openAd"_s)->click();
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);
        QTest::qWait(kSettledMs);
        QVERIFY(menu());

        QVERIFY(VirtualDesktop::click(m_item));
        QTest::qWait(kSettledMs);

        QVERIFY(menu());
        QVERIFY(adPanel());
    }

    void aClickElsewhereLeavesTheAdWhereItIs()
    {
        launch();
        state().autoOpenAds = true;
        state().availableAd = anAd();
        QTRY_VERIFY_WITH_TIMEOUT(adPanel(), kPatienceMs);

        QVERIFY(VirtualDesktop::click(kBareDesktop));
        QTest::qWait(kSettledMs);

        QVERIFY(adPanel());
    }

    void aRightClickOpensTheMenuWithTheWayOutWherePanelsAskForIt()
    {
        launch();
        const auto item = waitForItem();
        QVERIFY(item);

        QVERIFY(VirtualDesktop::click(*item, 3));

        if (qEnvironmentVariable("XDG_CURRENT_DESKTOP") == u"XFCE"_s) {
            // This panel has a menu of its own for items that export none.
            QTest::qWait(kSettledMs);
            QVERIFY(!QApplication::activePopupWidget());
            QVERIFY(press(u"Escape"_s));
            return;
        }
        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activePopupWidget(), kPatienceMs);
        QCOMPARE(QApplication::activePopupWidget()->objectName(), u"statusMenu"_s);
        QVERIFY(press(u"Escape"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activePopupWidget(), kPatienceMs);
    }

    void theStartupWindowComesToTheFrontOnEveryReopen()
    {
        PlainEditor editor;
        QVERIFY(editor.start({100, 300, 400, 300}));
        launch();
        QVERIFY(VirtualDesktop::click({200, 400}));

        m_delegate->applicationShouldHandleReopen();

        QTRY_VERIFY_WITH_TIMEOUT(QApplication::activeWindow(), kPatienceMs);
        QCOMPARE(QApplication::activeWindow()->objectName(), u"launchWindow"_s);
        QVERIFY(press(u"Return"_s));
        QTRY_VERIFY_WITH_TIMEOUT(!QApplication::activeWindow(), kPatienceMs);
    }

private:
    void launch()
    {
        m_platform = std::make_unique<SystemPlatform>(m_profile->path(),
            std::vector<OverlaySettings::Entry> {{u"showLaunchWindowAtStartup"_s, Json(false)},
                {u"autoOpenAds"_s, Json(false)}, {u"apiBaseURL"_s, Json(u"https://service.test/"_s)}});
        m_delegate = std::make_unique<AppDelegate>(m_platform->lend(), *m_transport);
        m_delegate->applicationDidFinishLaunching();
        // The start of a run is over then: nothing writes a secret any more that an end would interrupt.
        QTRY_VERIFY_WITH_TIMEOUT(m_transport->count(endpoints::kAdsAvailable) > 0, kPatienceMs);
    }

    static std::optional<QPoint> waitForGreen()
    {
        std::optional<QPoint> place;
        [[maybe_unused]] const bool found = QTest::qWaitFor(
            [&place] {
                place = find(StatusAppearance::Tone::green);
                return place.has_value();
            },
            kPatienceMs);
        return place;
    }

    /// Where the item is. It is green for a moment: there is nothing else of that colour in a panel.
    std::optional<QPoint> waitForItem()
    {
        state().statusTitle = kAdTitle;
        const auto place = waitForGreen();
        state().statusTitle = u"$0.00"_s;
        return place;
    }

    void openMenu()
    {
        launch();
        const auto item = waitForItem();
        QVERIFY(item);
        m_item = *item;
        QVERIFY(VirtualDesktop::click(*item));
        QTRY_VERIFY_WITH_TIMEOUT(menu(), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(QApplication::activeWindow(), menu(), kPatienceMs);
    }

    [[nodiscard]] AppState& state() const { return m_delegate->controller()->state(); }

    QPoint m_item;
    std::unique_ptr<QTemporaryDir> m_profile;
    std::unique_ptr<FakeTransport> m_transport;
    std::unique_ptr<SystemPlatform> m_platform;
    std::unique_ptr<AppDelegate> m_delegate;
};

int main(int argumentCount, char** arguments)
{
    QApplication application(argumentCount, arguments);
    if (PlainEditor::isWanted(QApplication::arguments()))
        return PlainEditor::run(QApplication::arguments());
    QApplication::setQuitOnLastWindowClosed(false);
    FaceOnPanelTest test;
    return QTest::qExec(&test, argumentCount, arguments);
}

#include "FaceOnPanelTest.moc"
