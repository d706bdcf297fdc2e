#pragma once

#include "platform/WindowSystem.h"

namespace orvella {

class CocoaApplication;
class CocoaStatusItem;

/// The program's windows on a Mac, where popovers are the system's own.
class MacWindowSystem final : public WindowSystem {
public:
    MacWindowSystem(CocoaApplication& application, CocoaStatusItem& statusItem);

    [[nodiscard]] bool isCompositing() const override { return true; }

    [[nodiscard]] bool placesWindows() const override { return true; }

    void activate(QWindow& window) override;

    // Both are the popovers' own business.
    void setInputRegion(QWindow& /*window*/, const QRegion& /*region*/) override {}

    [[nodiscard]] std::unique_ptr<PressWatch> watchPresses(std::function<void(QPoint)> /*pressed*/) override
    {
        return std::make_unique<PressWatch>();
    }

    [[nodiscard]] std::unique_ptr<NativePopover> makePopover(
        NativePopover::Behaviour behaviour, std::function<void()> closed) override;

private:
    CocoaApplication& m_application;
    CocoaStatusItem& m_statusItem;
};

} // namespace orvella
