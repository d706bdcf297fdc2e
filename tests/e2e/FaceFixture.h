#pragma once

#include "api/Endpoints.h"
#include "app/AppDelegate.h"
#include "platform/StatusItem.h"
#include "platform/SystemPlatform.h"
#include "platform/linux/item/PanelTone.h"
#include "support/FakeTransport.h"
#include "support/ShownWindow.h"
#include "support/VirtualDesktop.h"
#include "ui/popover/Popover.h"

#include <QApplication>
#include <QPalette>
#include <QScreen>
#include <QTemporaryDir>
#include <QTest>

#include <memory>
#include <optional>

namespace orvella {

/// The program's own objects on a real desktop over a service that is played, for a test to derive from.
class FaceFixture {
protected:
    static constexpr int kPatienceMs = 15'000;
    /// Longer than anything that may still happen.
    static constexpr int kSettledMs = 600;
    /// In pixels, with a little of what is below the panel.
    static constexpr int kPanelHeight = 40;
    static constexpr QPoint kBareDesktop {300, 650};

    static Popover* popover(const QString& name) { return qobject_cast<Popover*>(shownWindow(name)); }

    static Popover* menu() { return popover(QStringLiteral("menuPanel")); }

    static Popover* adPanel() { return popover(QStringLiteral("adPanel")); }

    /// Waits until the window is on the screen where it says it is, with everything in it in its place.
    static bool settles(Popover& popover)
    {
        const auto* const content = popover.findChild<QWidget*>(QString(), Qt::FindDirectChildrenOnly);
        const bool isThere = QTest::qWaitForWindowExposed(&popover, kPatienceMs)
            && QTest::qWaitFor(
                [&] { return content->mapToGlobal(QPoint()) == popover.contentRect().topLeft(); }, kPatienceMs);
        QTest::qWait(kSettledMs);
        return isThere;
    }

    static bool type(const QString& keys)
    {
        return VirtualDesktop::run(
            QStringLiteral("xdotool"), {QStringLiteral("type"), QStringLiteral("--delay"), QStringLiteral("20"), keys});
    }

    static bool press(const QString& key)
    {
        return VirtualDesktop::run(QStringLiteral("xdotool"), {QStringLiteral("key"), key});
    }

    static std::optional<QPoint> find(StatusAppearance::Tone tone)
    {
        const QRect panel(0, 0, QGuiApplication::primaryScreen()->size().width(), kPanelHeight);
        const auto found =
            VirtualDesktop::find(VirtualDesktop::screenshot(panel), statusColour(tone, PanelTone::light));
        return found ? std::optional(found->center()) : std::nullopt;
    }

    static void lightenPalette()
    {
        // The panel of this desktop is light; without a settings service no palette says so.
        QPalette palette = QGuiApplication::palette();
        palette.setColor(QPalette::Window, Qt::white);
        QGuiApplication::setPalette(palette);
    }

    void start()
    {
        // Two clicks in a row would be a double one.
        QTest::qWait(QApplication::doubleClickInterval());
        m_profile = std::make_unique<QTemporaryDir>();
        m_transport = std::make_unique<FakeTransport>();
        m_transport->answerEverything();
    }

    void finish()
    {
        m_delegate.reset();
        m_platform.reset();
    }

    void launch()
    {
        m_platform = std::make_unique<SystemPlatform>(m_profile->path(),
            std::vector<OverlaySettings::Entry> {{QStringLiteral("showLaunchWindowAtStartup"), Json(false)},
                {QStringLiteral("autoOpenAds"), Json(false)},
                {QStringLiteral("apiBaseURL"), Json(QStringLiteral("https://service.test/"))}});
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
        state().statusTitle = QStringLiteral("$0.00");
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

} // namespace orvella
