#pragma once

#include "ui/ad/AdViewing.h"

#include <QPoint>

class QFrame;

namespace orvella {

struct Platform;

/// The panel of one ad: closes only when its viewing or the viewer says so. Built for one ad, not used again.
class AdWindowController final : public QObject {
    Q_OBJECT

public:
    struct OwnerActions {
        std::function<void()> onDismiss;
        std::function<void(std::optional<double>)> onFinished;
    };

    AdWindowController(
        const AvailableAd& ad, APIClient& api, bool anonymousMode, const Platform& platform, OwnerActions actions);
    ~AdWindowController() override;

    /// Shows the panel beside `anchor`, a place in the bar, or in the corner where the place is not known, and starts
    /// the viewing.
    void show(std::optional<QPoint> anchor);
    [[nodiscard]] bool isShown() const;
    [[nodiscard]] AdViewing& viewing() { return m_viewing; }

    /// A window manager that closes the panel does so for the viewer: that is a dismissal.
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void close();

    OwnerActions m_actions;
    AdViewing m_viewing;
    std::unique_ptr<QFrame> m_panel;
};

} // namespace orvella
