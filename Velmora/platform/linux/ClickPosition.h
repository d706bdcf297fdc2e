#pragma once

#include <QList>
#include <QPoint>
#include <QRect>

#include <optional>

namespace orvella {

/// A screen and the part of it that the desktop's panels leave to windows.
struct ScreenArea {
    QRect whole;
    QRect available;
};

/// Where the status item was clicked, in screen coordinates; nothing where that is not known.
///
/// Some bars report a position within the item instead of one on the screen, so the reported one counts only where it
/// lies in a panel. Else the pointer's position is taken, if there is one that can be trusted.
[[nodiscard]] std::optional<QPoint> clickPosition(
    QPoint reported, const QList<ScreenArea>& screens, const std::optional<QPoint>& pointer);

} // namespace orvella
