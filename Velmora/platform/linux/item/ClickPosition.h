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
/// The pointer's position counts first, if there is one that can be trusted and it lies in a panel: what bars report
/// may be within the item, or in device pixels. Then the reported one, if it lies in a panel. Then the pointer's at an
/// edge of a screen, where a panel may hide. An item that was activated by the keyboard has none of them.
[[nodiscard]] std::optional<QPoint> clickPosition(
    QPoint reported, const QList<ScreenArea>& screens, const std::optional<QPoint>& pointer);

} // namespace orvella
