#pragma once

#include "platform/NativePopover.h"

#include <QPoint>

#include <functional>
#include <memory>

class QRegion;
class QWindow;

namespace orvella {

/// Listens as long as it lives.
class PressWatch {
public:
    virtual ~PressWatch() = default;
};

/// What the session's window system lets a program do with its own windows.
class WindowSystem {
public:
    virtual ~WindowSystem() = default;

    /// Whether a window may be partly transparent now.
    [[nodiscard]] virtual bool isCompositing() const = 0;

    /// Whether a window goes where the program puts it. Elsewhere it is an ordinary window that the desktop places.
    [[nodiscard]] virtual bool placesWindows() const = 0;

    /// Brings a window that the viewer asked for to the front and gives it the keyboard.
    virtual void activate(QWindow& window) = 0;

    /// Lets the pointer through everywhere but in this region of a window, given in the window's own coordinates.
    virtual void setInputRegion(QWindow& window, const QRegion& region) = 0;

    /// A popover of the window system's own; nothing where there are none, and the program makes them. `closed` is
    /// called whenever it has closed, whoever closed it.
    [[nodiscard]] virtual std::unique_ptr<NativePopover> makePopover(
        NativePopover::Behaviour /*behaviour*/, std::function<void()> /*closed*/)
    {
        return nullptr;
    }

    /// Calls `pressed` with the place on the desktop whenever a button of the pointer goes down, wherever that is, as
    /// long as the watch is kept. While there is none, nothing is reported to the program.
    [[nodiscard]] virtual std::unique_ptr<PressWatch> watchPresses(std::function<void(QPoint)> pressed) = 0;
};

} // namespace orvella
