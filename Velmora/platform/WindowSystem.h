#pragma once

#include <QPoint>

#include <functional>

class QWindow;

namespace orvella {

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

    /// Calls `pressed` with the place on the desktop whenever a button of the pointer goes down, wherever that is,
    /// until it is replaced. An empty function ends it; while nobody listens nothing is reported to the program.
    virtual void watchPresses(std::function<void(QPoint)> pressed) = 0;
};

} // namespace orvella
