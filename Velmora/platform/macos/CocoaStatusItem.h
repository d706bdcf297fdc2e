#pragma once

#include "platform/macos/CocoaPopover.h"

#include <functional>
#include <memory>
#include <string>

namespace orvella {

/// The program's item in the menu bar.
class CocoaStatusItem {
public:
    struct Appearance {
        std::string text;
        /// In points.
        double length = 0;
        bool isGreen = false;
        /// The tooltip and the accessible label.
        std::string description;
    };

    virtual ~CocoaStatusItem() = default;

    virtual void show(std::function<void()> clicked) = 0;
    /// Nothing happens while there is no button.
    virtual void setAppearance(const Appearance& appearance) = 0;

    /// A popover that may hang from the item. `closed` is called whenever it has closed, after it
    /// has gone with motion; it may have been shown again in the meantime.
    [[nodiscard]] virtual std::unique_ptr<CocoaPopover> makePopover(
        CocoaPopover::Behaviour behaviour, std::function<void()> closed) = 0;

    [[nodiscard]] static std::unique_ptr<CocoaStatusItem> make();
};

} // namespace orvella
