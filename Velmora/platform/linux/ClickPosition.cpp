#include "platform/linux/ClickPosition.h"

#include <algorithm>

namespace orvella {

std::optional<QPoint> clickPosition(
    QPoint reported, const QList<ScreenArea>& screens, const std::optional<QPoint>& pointer)
{
    const bool isInPanel = std::ranges::any_of(screens, [reported](const ScreenArea& screen) {
        return screen.whole.contains(reported) && !screen.available.contains(reported);
    });
    return isInPanel ? reported : pointer;
}

} // namespace orvella
