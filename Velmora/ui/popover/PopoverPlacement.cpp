#include "ui/popover/PopoverPlacement.h"

#include <algorithm>

namespace orvella {

namespace {

constexpr int kMargin = 8;

/// A span as long as `length` inside of the room, as near as can be to where it would start.
int clamped(int wanted, int length, int first, int beyond)
{
    return std::clamp(wanted, first + kMargin, std::max(first + kMargin, beyond - kMargin - length));
}

int clampedLeft(int wanted, QSize size, const QRect& area)
{
    return clamped(wanted, size.width(), area.left(), area.left() + area.width());
}

int clampedTop(int wanted, QSize size, const QRect& area)
{
    return clamped(wanted, size.height(), area.top(), area.top() + area.height());
}

PopoverPlace inCorner(QSize size, const ScreenArea& home, Qt::LayoutDirection direction)
{
    const auto& area = home.available;
    const auto barAbove = area.top() - home.whole.top();
    const auto barBelow = home.whole.bottom() - area.bottom();
    const int farRight = area.left() + area.width();
    const int farBottom = area.top() + area.height();
    return {{clampedLeft(direction == Qt::RightToLeft ? area.left() : farRight, size, area),
                clampedTop(barBelow > barAbove ? farBottom : area.top(), size, area)},
        {.size = size}};
}

PopoverPlace besideUprightBar(QSize size, const QRect& anchor, const QRect& area)
{
    const auto centre = anchor.center();
    return {{clampedLeft(centre.x() < area.left() ? area.left() : area.left() + area.width(), size, area),
                clampedTop(centre.y() - size.height() / 2, size, area)},
        {.size = size}};
}

PopoverPlace belowOrAbove(QSize size, const PopoverAnchor& anchor, const QRect& area)
{
    const auto distance = anchor.gap + kArrowHeight;
    const int beyond = area.top() + area.height();
    const int below = std::max(anchor.rect.top() + anchor.rect.height(), area.top()) + distance;
    const int above = std::min(anchor.rect.top(), beyond) - distance - size.height();
    const bool fitsBelow = below + size.height() + kMargin <= beyond;

    const int tip = anchor.rect.left() + anchor.rect.width() / 2;
    const int left = clampedLeft(tip - size.width() / 2, size, area);
    const int mostRight = std::max(kLeastArrowInset, size.width() - kLeastArrowInset);
    return {{left, fitsBelow ? below : std::max(above, area.top() + kMargin)},
        {size, fitsBelow ? Bubble::Arrow::up : Bubble::Arrow::down,
            std::clamp(tip - left, kLeastArrowInset, mostRight)}};
}

} // namespace

PopoverPlace placePopover(QSize size, const std::optional<PopoverAnchor>& anchor, const QList<ScreenArea>& screens,
    const ScreenArea& home, Qt::LayoutDirection direction)
{
    if (!anchor)
        return inCorner(size, home, direction);
    const auto centre = anchor->rect.center();
    const auto screen = std::ranges::find_if(
        screens, [centre](const ScreenArea& candidate) { return candidate.whole.contains(centre); });
    if (screen == screens.end())
        return inCorner(size, home, direction);
    const auto& area = screen->available;
    if (centre.x() < area.left() || centre.x() >= area.left() + area.width())
        return besideUprightBar(size, anchor->rect, area);
    return belowOrAbove(size, *anchor, area);
}

} // namespace orvella
