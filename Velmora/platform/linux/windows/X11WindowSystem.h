#pragma once

#include "platform/WindowSystem.h"
#include "platform/linux/windows/X11Activation.h"
#include "platform/linux/windows/X11Presses.h"
#include "platform/linux/x11/X11Display.h"
#include "platform/linux/x11/X11Hints.h"

#include <utility>

namespace orvella {

/// The program's windows on an X11 display.
class X11WindowSystem final : public WindowSystem {
public:
    explicit X11WindowSystem(const X11Display& display);

    [[nodiscard]] bool isCompositing() const override;
    [[nodiscard]] bool placesWindows() const override { return true; }

    void activate(QWindow& window) override { m_activation.activate(window); }

    void setInputRegion(QWindow& window, const QRegion& region) override;

    [[nodiscard]] std::unique_ptr<PressWatch> watchPresses(std::function<void(QPoint)> pressed) override
    {
        return m_presses.watch(std::move(pressed));
    }

private:
    X11Display m_display;
    X11Hints m_hints;
    X11Activation m_activation;
    X11Presses m_presses;
};

} // namespace orvella
