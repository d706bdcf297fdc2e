#pragma once

#include "app/StatusMenu.h"
#include "core/AppState.h"
#include "ui/LaunchWindowController.h"
#include "ui/ad/AdWindowController.h"
#include "ui/look/Look.h"
#include "ui/popover/Popover.h"

namespace orvella {

/// Everything the program has in the desktop's bar, and what hangs from it. Creates the one state and keeps it for the
/// whole run.
class StatusBarController final : public QObject {
    Q_OBJECT

public:
    /// Where the system keeps the status item's place among the settings, puts a new item near the end of the bar. A
    /// place that the viewer has chosen is left alone. Comes before the controller.
    static void prepareStatusItemPlacement(const Platform& platform);

    /// Shows the status item and starts the state.
    StatusBarController(const Platform& platform, Transport& transport);

    [[nodiscard]] AppState& state() { return m_state; }

    void statusItemClicked();
    /// Shows the ad on offer, or the menu where there is none. The viewer asked for it.
    void showCurrentAd();
    /// Leads to the ad: to the one on screen, else to the one on offer, else to the menu.
    void openAd();
    /// Shows a panel for this ad; does nothing while there is one on screen.
    void showAd(const AvailableAd& ad, Popover::Keyboard keyboard);
    /// Shows the status title: "$", or "$ AD" in green for exactly "AD". The balance only reaches the description.
    void updateStatusItem(const QString& title);

    /// Whether an ad that is offered now may open by itself.
    [[nodiscard]] bool shouldAutoOpenAd() const;

    /// Shows the startup window unless the viewer has turned it off.
    void showLaunchWindowIfNeeded();
    /// Brings the startup window to the front.
    void showLaunchWindow();

Q_SIGNALS:
    /// The viewing of an ad failed. Nothing of it is shown.
    void adFailed(const Failure& failure);

private:
    [[nodiscard]] bool isAdShown() const;
    void availableAdChanged(const std::optional<AvailableAd>& ad);
    void showMenuPopover();
    [[nodiscard]] std::unique_ptr<Popover> menuPopover();
    void showStatusMenu(QPoint place);
    /// The service may have credited a view that nobody waits for any more, or whose answer got lost.
    void doubtWalletWithoutVerdict();
    QCoro::Task<> adFinished(AvailableAd ad, std::optional<double> earnedCents);

    Platform m_platform;
    AppState m_state;
    Look m_look;
    /// The menu, made when it is first shown.
    std::unique_ptr<Popover> m_popover;
    std::unique_ptr<AdWindowController> m_adPopover;
    std::unique_ptr<LaunchWindowController> m_launchWindow;
    std::unique_ptr<StatusMenu> m_statusMenu;
    /// When an ad last opened by itself in this run.
    std::optional<Instant> m_lastAutoOpenAt;
};

} // namespace orvella
