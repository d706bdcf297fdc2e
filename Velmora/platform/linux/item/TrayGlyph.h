#pragma once

#include <QColor>
#include <QImage>

namespace orvella {

/// The pictures that stand for the program in a bar that takes icons but no text.
enum class TrayGlyph { dollar, dollarAd };

/// Draws the glyph as a square picture of `pixels` device pixels each way, at least 16, transparent around the strokes.
///
/// There is a drawing of its own for 16, 22, 24 and 32 pixels, with every stroke on whole pixels; a larger picture is
/// the drawing that fills it best, magnified by a whole number and centred.
[[nodiscard]] QImage drawTrayGlyph(TrayGlyph glyph, int pixels, const QColor& colour);

} // namespace orvella
