#include "platform/linux/item/ClickPosition.h"

#include <algorithm>

namespace orvella {

namespace {

/// As thick as the panels that hide are, in points.
constexpr int kThickness = 48;

bool isInPanel(QPoint place, const QList<ScreenArea>& screens)
{
    return std::ranges::any_of(screens, [place](const ScreenArea& screen) {
        return screen.whole.contains(place) && !screen.available.contains(place);
    });
}

/// Where a panel may be that takes no room away from windows, because it hides or lies over them.
bool isAtEdge(QPoint place, const QList<ScreenArea>& screens)
{
    return std::ranges::any_of(screens, [place](const ScreenArea& screen) {
        return screen.whole.contains(place)
            && !screen.whole.adjusted(kThickness, kThickness, -kThickness, -kThickness).contains(place);
    });
}

} // namespace

std::optional<QPoint> clickPosition(
    QPoint reported, const QList<ScreenArea>& screens, const std::optional<QPoint>& pointer)
{
    if (pointer && isInPanel(*pointer, screens))
        return pointer;
    if (isInPanel(reported, screens))
        return reported;
    return pointer && isAtEdge(*pointer, screens) ? pointer : std::nullopt;
}

} // namespace orvella
