#pragma once

#include <QRectF>
#include <QString>

class QPainter;

namespace orvella {

/// Draws a line of text so that it is centred on its box as fonts measure themselves, whatever room a font wants around
/// its lines: layouts stay the same under every font.
///
/// `direction` is that of the whole text which the line belongs to; `alignment` is the side it keeps to, as seen on the
/// screen.
void paintLine(
    QPainter& painter, const QRectF& box, const QString& text, Qt::LayoutDirection direction, Qt::Alignment alignment);

/// The direction in which a text runs: that of the user interface if it is written in a script of that direction at
/// all, else its own. So a sentence is not turned around by the name of a product that it begins with.
[[nodiscard]] Qt::LayoutDirection textDirection(const QString& text, Qt::LayoutDirection interface);

} // namespace orvella
