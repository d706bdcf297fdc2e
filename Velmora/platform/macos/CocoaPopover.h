#pragma once

#include <optional>

namespace orvella {

/// A popover of AppKit's, around a view of the toolkit's.
class CocoaPopover {
public:
    enum class Behaviour { applicationDefined, transient };

    /// A part of a view of the toolkit's, in points from its upper left corner.
    struct Anchor {
        /// An NSView.
        void* view = nullptr;
        double left = 0;
        double top = 0;
        double width = 0;
        double height = 0;
    };
    struct Content {
        /// An NSView.
        void* view = nullptr;
        double width = 0;
        double height = 0;
    };

    virtual ~CocoaPopover() = default;

    /// Shows it below the anchor; without one, below the status item's button, where there is one. Nothing
    /// is shown where that is in no window.
    virtual void show(const Content& content, const std::optional<Anchor>& anchor) = 0;
    /// Nothing happens while another popover hangs from this one, or is still on its way out.
    virtual void performClose() = 0;
    /// Closes it, and whatever hangs from it.
    virtual void close() = 0;
    [[nodiscard]] virtual bool isShown() const = 0;
};

} // namespace orvella
