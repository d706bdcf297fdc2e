#pragma once

#include "platform/WindowSystem.h"

#include <QString>

namespace orvella {

/// The program's windows where only Qt can be asked: in a Wayland session without X11, and without a screen.
class QtWindowSystem final : public WindowSystem {
public:
    enum class Kind { wayland, offscreen };

    /// `takeToken` gives out the right to bring a window to the front that came with the viewer's last click, and may
    /// be empty.
    QtWindowSystem(Kind kind, std::function<QString()> takeToken);

    /// Every Wayland compositor can show what lies behind a window.
    [[nodiscard]] bool isCompositing() const override { return m_kind == Kind::wayland; }

    [[nodiscard]] bool placesWindows() const override { return m_kind != Kind::wayland; }

    void activate(QWindow& window) override;

    /// Windows that the desktop places have nothing around them.
    void setInputRegion(QWindow& /*window*/, const QRegion& /*region*/) override {}

    /// Nobody tells a Wayland program of presses outside its windows.
    [[nodiscard]] std::unique_ptr<PressWatch> watchPresses(std::function<void(QPoint)> /*pressed*/) override
    {
        return std::make_unique<PressWatch>();
    }

private:
    Kind m_kind;
    std::function<QString()> m_takeToken;
};

} // namespace orvella
