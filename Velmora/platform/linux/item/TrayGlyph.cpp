#include "platform/linux/item/TrayGlyph.h"

#include <QPainter>
#include <QPainterPath>
#include <QRectF>

#include <algorithm>
#include <array>
#include <cmath>
#include <ranges>

namespace orvella {

namespace {

/// A box of the grid, with what its letter has in the way of inner measures: the height of the nubs of a "$" or the
/// place of the crossbar of an "A".
struct LetterBox {
    QRectF outer;
    qreal detail = 0;
};

/// The measures of the two glyphs for one size, in pixels.
struct Drawing {
    int pixels;
    qreal dollarStroke;
    LetterBox dollar;
    qreal wordStroke;
    LetterBox wordDollar;
    LetterBox wordA;
    LetterBox wordD;
};

const std::array kDrawings {
    Drawing {16, 2, {{3, 1, 10, 14}, 2}, 0, {}, {}, {}},
    Drawing {22, 3, {{4, 1, 13, 19}, 2}, 2, {{0, 2, 8, 18}, 2}, {{9, 4, 6, 14}, 11}, {{16, 4, 6, 14}}},
    Drawing {24, 3, {{5, 1, 13, 21}, 3}, 2, {{0, 2, 8, 20}, 2}, {{9, 4, 7, 16}, 12}, {{17, 4, 7, 16}}},
    Drawing {32, 4, {{6, 2, 20, 28}, 4}, 3, {{0, 2, 9, 28}, 3}, {{11, 5, 9, 22}, 16}, {{22, 5, 10, 22}}},
};

/// "$AD" at 16 pixels: too small for strokes, so it is set pixel by pixel.
constexpr std::array<QStringView, 16> kSmallWord {
    u"................",
    u"..X.............",
    u"..X.............",
    u".XXX...XX..XXXX.",
    u"X.X.X.X..X.X...X",
    u"X.X...X..X.X...X",
    u"X.X...X..X.X...X",
    u".XX...X..X.X...X",
    u"..XX..XXXX.X...X",
    u"..X.X.X..X.X...X",
    u"..X.X.X..X.X...X",
    u"X.X.X.X..X.X...X",
    u".XXX..X..X.XXXX.",
    u"..X.............",
    u"..X.............",
    u"................",
};

/// A quarter of a circle from the current point to `end`, leaving it upwards or downwards where `vertical`, else to the
/// side.
void quarterTo(QPainterPath& path, QPointF end, bool vertical)
{
    // A cubic curve with this length of its handles is a quarter of a circle to within 0.03 % of the radius.
    constexpr qreal kHandle = 0.5522847498;
    const auto start = path.currentPosition();
    const QPointF corner = vertical ? QPointF(start.x(), end.y()) : QPointF(end.x(), start.y());
    path.cubicTo(start + (corner - start) * kHandle, end + (corner - end) * kHandle, end);
}

/// An S between two nubs, as the middle line of a stroke; the bar in the middle lies on whole pixels.
void addDollar(QPainterPath& path, const LetterBox& box, qreal stroke)
{
    const auto inner = box.outer.adjusted(stroke / 2, box.detail + stroke / 2, -stroke / 2, -box.detail - stroke / 2);
    const auto left = inner.left();
    const auto right = inner.right();
    const auto top = inner.top();
    const auto bottom = inner.bottom();
    const auto middle = std::nearbyint((top + bottom) / 2 - stroke / 2) + stroke / 2;
    const auto upper = std::min((middle - top) / 2, (right - left) / 2);
    const auto lower = std::min((bottom - middle) / 2, (right - left) / 2);

    path.moveTo(right, top + upper);
    quarterTo(path, {right - upper, top}, true);
    path.lineTo(left + upper, top);
    quarterTo(path, {left, top + upper}, false);
    path.lineTo(left, middle - upper);
    quarterTo(path, {left + upper, middle}, true);
    path.lineTo(right - lower, middle);
    quarterTo(path, {right, middle + lower}, false);
    path.lineTo(right, bottom - lower);
    quarterTo(path, {right - lower, bottom}, true);
    path.lineTo(left + lower, bottom);
    quarterTo(path, {left, bottom - lower}, false);

    const auto centre = box.outer.center().x();
    path.moveTo(centre, box.outer.top());
    path.lineTo(centre, top);
    path.moveTo(centre, box.outer.bottom());
    path.lineTo(centre, bottom);
}

void addA(QPainterPath& path, const LetterBox& box, qreal stroke)
{
    const auto inner = box.outer.adjusted(stroke / 2, stroke / 2, -stroke / 2, 0);
    const auto radius = std::min(inner.width() / 2, stroke * 1.5);

    path.moveTo(inner.bottomLeft());
    path.lineTo(inner.left(), inner.top() + radius);
    quarterTo(path, {inner.left() + radius, inner.top()}, true);
    path.lineTo(inner.right() - radius, inner.top());
    quarterTo(path, {inner.right(), inner.top() + radius}, false);
    path.lineTo(inner.bottomRight());
    path.moveTo(inner.left(), box.detail + stroke / 2);
    path.lineTo(inner.right(), box.detail + stroke / 2);
}

void addD(QPainterPath& path, const LetterBox& box, qreal stroke)
{
    const auto inner = box.outer.adjusted(stroke / 2, stroke / 2, -stroke / 2, -stroke / 2);
    const auto radius = std::min({inner.height() / 2, inner.width(), stroke * 1.75});

    path.moveTo(inner.topLeft());
    path.lineTo(inner.right() - radius, inner.top());
    quarterTo(path, {inner.right(), inner.top() + radius}, false);
    path.lineTo(inner.right(), inner.bottom() - radius);
    quarterTo(path, {inner.right() - radius, inner.bottom()}, true);
    path.lineTo(inner.bottomLeft());
    path.closeSubpath();
}

void paintSmallWord(QPainter& painter, const QColor& colour)
{
    for (std::size_t line = 0; line < kSmallWord.size(); ++line)
        for (qsizetype column = 0; column < kSmallWord[line].size(); ++column)
            if (kSmallWord[line][column] == u'X')
                painter.fillRect(QRectF(static_cast<qreal>(column), static_cast<qreal>(line), 1, 1), colour);
}

void paint(QPainter& painter, TrayGlyph glyph, const Drawing& drawing, const QColor& colour)
{
    const bool isWord = glyph == TrayGlyph::dollarAd;
    if (isWord && drawing.wordStroke == 0) {
        paintSmallWord(painter, colour);
        return;
    }

    QPainterPath path;
    if (isWord) {
        addDollar(path, drawing.wordDollar, drawing.wordStroke);
        addA(path, drawing.wordA, drawing.wordStroke);
        addD(path, drawing.wordD, drawing.wordStroke);
    } else {
        addDollar(path, drawing.dollar, drawing.dollarStroke);
    }
    const auto stroke = isWord ? drawing.wordStroke : drawing.dollarStroke;
    QPainterPathStroker stroker;
    stroker.setWidth(stroke);
    stroker.setCapStyle(Qt::FlatCap);
    stroker.setJoinStyle(Qt::MiterJoin);
    // The usual tolerance is meant for curves much wider than their stroke; here it would eat the corners.
    stroker.setCurveThreshold(0.01);
    painter.fillPath(stroker.createStroke(path), colour);
}

int magnification(const Drawing& drawing, int pixels)
{
    return pixels / drawing.pixels;
}

/// The drawing that fills the picture best; of two that fill it alike, the one with more detail.
const Drawing& bestDrawing(int pixels)
{
    return *std::ranges::max_element(kDrawings | std::views::reverse, {},
        [pixels](const Drawing& drawing) { return drawing.pixels * magnification(drawing, pixels); });
}

} // namespace

QImage drawTrayGlyph(TrayGlyph glyph, int pixels, const QColor& colour)
{
    const auto& drawing = bestDrawing(pixels);
    const auto factor = magnification(drawing, pixels);
    const auto margin = (pixels - drawing.pixels * factor) / 2;

    QImage image(pixels, pixels, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(margin, margin);
    painter.scale(factor, factor);
    paint(painter, glyph, drawing, colour);
    return image;
}

} // namespace orvella
