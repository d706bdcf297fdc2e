#pragma once

#include "ui/popover/PopoverPlacement.h"

namespace orvella {

/// The screens of the desktop as they are now.
class Screens final {
public:
    Screens() = delete;

    [[nodiscard]] static QList<ScreenRoom> rooms();
    /// The one that the viewer is at, as far as the pointer tells.
    [[nodiscard]] static ScreenRoom home();
    /// Whether this place belongs to one of the desktop's bars.
    [[nodiscard]] static bool isInBar(QPoint place);
};

} // namespace orvella
