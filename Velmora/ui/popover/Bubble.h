#pragma once

#include <QImage>
#include <QPainterPath>
#include <QRectF>

class QPainter;

namespace orvella {

struct Theme;

/// The shape of a popover: a rounded rectangle, with an arrow where it points at something.
struct Bubble {
    enum class Arrow { none, up, down };

    /// The size of the content in points.
    QSize size;
    Arrow arrow = Arrow::none;
    /// From the left edge of the content to the tip of the arrow.
    int arrowCentre = 0;

    friend bool operator==(const Bubble&, const Bubble&) = default;
};

/// How far the tip of the arrow is from the content.
inline constexpr int kArrowHeight = 8;
/// How near the centre of the arrow may come to a corner.
inline constexpr int kLeastArrowInset = 24;

/// The radius of round corners.
inline constexpr int kBubbleRadius = 12;

/// Corners are square where a window cannot be transparent beside them.
enum class Corners { round, square };

/// The outline around the content, whose top left corner is at the origin: half a point outside of it, so that a pen of
/// one point lies next to the content.
[[nodiscard]] QPainterPath outline(const Bubble& bubble, Corners corners);

/// Fills the shape and draws its outline.
void paintBubble(QPainter& painter, const QPainterPath& outline, const Theme& theme);

} // namespace orvella
