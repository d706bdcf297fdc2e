#pragma once

#include <QRectF>

class QPainter;

namespace orvella {

struct Theme;

/// The little pictures of the user interface, drawn as strokes on a grid of 16 points.
enum class Symbol { info, close, menuBar, coin, bolt };

/// Draws the symbol into a square box, in the secondary colour; the coin in green, on the colour of a window.
void paintSymbol(QPainter& painter, const QRectF& box, Symbol symbol, const Theme& theme);

} // namespace orvella
