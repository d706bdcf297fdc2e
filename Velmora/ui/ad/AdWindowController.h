#pragma once

#include "platform/Platform.h"
#include "ui/ad/AdViewing.h"
#include "ui/popover/Popover.h"

namespace orvella {

class AdWindowView;
class Look;

/// The panel of one ad: closes only when its viewing or the viewer says so. Built for one ad, not used again.
class AdWindowController final : public QObject {
    Q_OBJECT

public:
    struct OwnerActions {
        std::function<void()> onDismiss;
        std::function<void(std::optional<double>)> onFinished;
        std::function<void(const Failure&)> onFailed;
    };

    AdWindowController(const Look& look, const AvailableAd& ad, APIClient& api, bool anonymousMode,
        const Platform& platform, OwnerActions actions);
    ~AdWindowController() override;

    /// Shows the panel under the status item and starts the viewing.
    void show(Popover::Keyboard keyboard);
    [[nodiscard]] bool isShown() const;
    /// Gives the panel the keyboard.
    void activate();

    [[nodiscard]] AdViewing& viewing() { return m_viewing; }

    /// Shows the panel again in a moment if the system hid it because another program came to the front.
    void restoreAfterExternalOpen();

private:
    void buildPanel();
    void close();
    void updateDisclosure();
    QCoro::Task<> restore(std::stop_token stop);
    [[nodiscard]] std::optional<PopoverAnchor> informationAnchor() const;

    const Look& m_look;
    Platform m_platform;
    OwnerActions m_actions;
    AdViewing m_viewing;
    /// Declared after the viewing that they show, so that they go first.
    std::unique_ptr<Popover> m_popover;
    AdWindowView* m_view = nullptr;
    std::unique_ptr<Popover> m_disclosure;
    bool m_closeRequested = false;
    std::stop_source m_lifetime;
};

} // namespace orvella
