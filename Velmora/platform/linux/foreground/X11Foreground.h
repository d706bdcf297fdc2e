#pragma once

#include "platform/ForegroundFacts.h"
#include "platform/linux/x11/X11Display.h"

namespace orvella {

/// What the window manager of an X11 session says lies in front of the viewer. All sizes are in pixels.
///
/// The owner of a window is the process that the window names. Where it names none, the owner is the negated number of
/// the window, which no process has.
class X11Foreground final {
public:
    X11Foreground() = delete;

    /// Nothing without a window manager, and while no window has the keyboard.
    [[nodiscard]] static std::optional<qint64> frontApplication(const X11Display& display);

    /// Those of the present workspace, the topmost first. Nothing where no window manager keeps a list.
    [[nodiscard]] static std::optional<std::vector<ScreenWindow>> windows(const X11Display& display);

    /// The monitors, or the whole display where it does not know of monitors.
    [[nodiscard]] static std::vector<QSizeF> screens(const X11Display& display);
};

} // namespace orvella
