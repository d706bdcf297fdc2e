#pragma once

#include "platform/Screens.h"
#include "ui/popover/Bubble.h"

#include <QList>
#include <QPoint>
#include <QRect>

#include <optional>

class QWidget;

namespace orvella {

/// What a popover points at.
struct PopoverAnchor {
    /// On the desktop.
    QRect rect;
    /// From the anchor to the tip of the arrow.
    int gap = 0;
    /// What a popover of the window system's own hangs from; the status item where it is none of the program's widgets.
    const QWidget* widget = nullptr;
};

/// Where a popover is and what it looks like there.
struct PopoverPlace {
    /// The top left corner of the content on the desktop.
    QPoint corner;
    Bubble bubble;

    friend bool operator==(const PopoverPlace&, const PopoverPlace&) = default;
};

/// The place for content of this size.
///
/// Centred below the anchor or, where there is no room, above it; moved so far as to stay on the screen. Beside a bar
/// that stands upright there is no arrow. Without an anchor that lies on one of the screens it is the corner of the
/// work area of `home` that is nearest to the bar: at the end of the line in the direction of reading.
[[nodiscard]] PopoverPlace placePopover(QSize size, const std::optional<PopoverAnchor>& anchor,
    const QList<ScreenArea>& screens, const ScreenArea& home, Qt::LayoutDirection direction);

} // namespace orvella
