#pragma once

#include <QRect>

#include <optional>

class QWindow;

namespace orvella {

/// A popover of the window system's own, which frames and places it, and brings it in and takes it away.
class NativePopover {
public:
    enum class Behaviour {
        /// It goes with a click elsewhere.
        transient,
        /// It stays until the program closes it.
        applicationDefined,
    };

    /// A part of one of the program's windows, in the window's own coordinates.
    struct Part {
        QWindow* window = nullptr;
        QRect rect;
    };

    virtual ~NativePopover() = default;

    /// Shows this window in it, at this size, below the part of the other one; without that, below the status item.
    /// Nothing is shown where there is no status item. The window belongs to the popover from then on, which shows it
    /// as long as it is open itself.
    virtual void show(QWindow& content, QSize size, const std::optional<Part>& below) = 0;
    virtual void performClose() = 0;
    [[nodiscard]] virtual bool isShown() const = 0;
};

} // namespace orvella
