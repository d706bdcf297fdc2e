#pragma once

#include "core/AppState.h"
#include "ui/ad/AdWindowController.h"

namespace orvella {

/// Everything the program has in the desktop's bar, and what hangs from it. Creates the one state and keeps it for the
/// whole run.
class StatusBarController final : public QObject {
    Q_OBJECT

public:
    /// Shows the status item and starts the state.
    StatusBarController(const Platform& platform, Transport& transport);

    [[nodiscard]] AppState& state() { return m_state; }

    void statusItemClicked();
    /// Shows the ad on offer, if there is one.
    void showCurrentAd();
    /// Shows a panel for this ad; does nothing while there is one on screen.
    void showAd(const AvailableAd& ad);
    /// Shows the status title: "$", or "$ AD" in green for exactly "AD". The balance only reaches the description.
    void updateStatusItem(const QString& title);

private:
    [[nodiscard]] bool isAdShown() const;
    QCoro::Task<> adFinished(AvailableAd ad, std::optional<double> earnedCents);

    Platform m_platform;
    AppState m_state;
    std::unique_ptr<AdWindowController> m_adPopover;
};

} // namespace orvella
