#include "ui/popover/Bubble.h"

#include "ui/look/Theme.h"

#include <QPainter>

namespace orvella {

namespace {

constexpr qreal kArrowHalf = 9;
constexpr qreal kTipHalf = 1.6;
constexpr qreal kTipDrop = 0.9;
constexpr qreal kOutset = 0.5;

/// The arrow as the line goes along an edge at height `edge` from `from` to `to`; `out` is -1 for an arrow that points
/// up and 1 for one that points down.
void addArrow(QPainterPath& path, qreal centre, qreal edge, qreal out, qreal direction)
{
    const auto tip = edge + out * kArrowHeight;
    path.lineTo(centre - direction * kArrowHalf, edge);
    path.lineTo(centre - direction * kTipHalf, tip - out * kTipDrop);
    path.quadTo(centre, tip + out * kOutset, centre + direction * kTipHalf, tip - out * kTipDrop);
    path.lineTo(centre + direction * kArrowHalf, edge);
}

} // namespace

QPainterPath outline(const Bubble& bubble, Corners corners)
{
    const QRectF box = QRectF(QPointF(), bubble.size).adjusted(-kOutset, -kOutset, kOutset, kOutset);
    const auto radius = corners == Corners::round ? kBubbleRadius + kOutset : 0.0;
    const auto diameter = 2 * radius;
    const auto corner = [&](qreal left, qreal top, qreal angle, QPainterPath& path) {
        if (radius > 0)
            path.arcTo(left, top, diameter, diameter, angle, -90);
        else
            path.lineTo(left, top);
    };

    QPainterPath path(QPointF(box.left() + radius, box.top()));
    if (bubble.arrow == Bubble::Arrow::up)
        addArrow(path, bubble.arrowCentre, box.top(), -1, 1);
    corner(box.right() - diameter, box.top(), 90, path);
    corner(box.right() - diameter, box.bottom() - diameter, 0, path);
    if (bubble.arrow == Bubble::Arrow::down)
        addArrow(path, bubble.arrowCentre, box.bottom(), 1, -1);
    corner(box.left(), box.bottom() - diameter, -90, path);
    corner(box.left(), box.top(), 180, path);
    path.closeSubpath();
    return path;
}

void paintBubble(QPainter& painter, const QPainterPath& outline, const Theme& theme)
{
    painter.setRenderHint(QPainter::Antialiasing);
    painter.fillPath(outline, theme.surface);
    painter.strokePath(outline, QPen(theme.outline, 1));
}

} // namespace orvella
