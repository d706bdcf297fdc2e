#pragma once

#include "platform/macos/PropertyValue.h"

#include <cstdint>
#include <memory>
#include <vector>

namespace orvella {

/// The window server: what is on the screens now.
class CocoaForeground {
public:
    struct Size {
        double width = 0;
        double height = 0;
    };
    /// What the description of a window has of each type; a bound that is no number is 0.
    struct Window {
        std::optional<std::int64_t> owner;
        std::optional<std::int64_t> layer;
        std::optional<Size> size;
    };

    virtual ~CocoaForeground() = default;

    /// What the session's dictionary says of the lock; nothing without a dictionary.
    [[nodiscard]] virtual PropertyValue screenLock() const = 0;
    /// The process of the application in front.
    [[nodiscard]] virtual std::optional<std::int64_t> frontProcess() const = 0;
    /// The windows on the screens without the desktop's own, in the window server's order; nothing where it has no list
    /// of dictionaries to give.
    [[nodiscard]] virtual std::optional<std::vector<Window>> windows() const = 0;
    [[nodiscard]] virtual std::vector<Size> screens() const = 0;

    [[nodiscard]] static std::unique_ptr<CocoaForeground> make();
};

} // namespace orvella
