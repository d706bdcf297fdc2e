#pragma once

#include "platform/Screens.h"

#include <QList>
#include <QPoint>

#include <optional>

namespace orvella {

/// Where the status item was clicked, in screen coordinates; nothing where that is not known.
///
/// The pointer's position counts first, if there is one that can be trusted and it lies in a panel: what bars report
/// may be within the item, or in device pixels. Then the reported one, if it lies in a panel. Then the pointer's at an
/// edge of a screen, where a panel may hide. An item that was activated by the keyboard has none of them.
[[nodiscard]] std::optional<QPoint> clickPosition(
    QPoint reported, const QList<ScreenArea>& screens, const std::optional<QPoint>& pointer);

} // namespace orvella
