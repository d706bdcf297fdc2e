#pragma once

#include <QImage>
#include <QMargins>
#include <QPainterPath>

namespace orvella {

struct Theme;

/// The room that the shadow of a popover takes around its content, in points; the arrow lies within it.
inline constexpr QMargins kShadowMargins {28, 22, 28, 36};

/// The soft shadow under a shape whose content has this size, with the margins around it. `scale` is the number of
/// device pixels in a point.
[[nodiscard]] QImage shadow(const QPainterPath& shape, QSize size, qreal scale, const Theme& theme);

} // namespace orvella
