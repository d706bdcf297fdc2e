#include "ui/look/Symbol.h"

#include "ui/look/Theme.h"

#include <QPainter>
#include <QPainterPath>
#include <QPen>

namespace orvella {

namespace {

constexpr qreal kGrid = 16;

QPen stroke(const QColor& colour, qreal width)
{
    return {colour, width, Qt::SolidLine, Qt::RoundCap};
}

void paintInfo(QPainter& painter, const QColor& colour)
{
    painter.setPen(stroke(colour, 1.5));
    painter.drawEllipse(QPointF(8, 8), 6.25, 6.25);
    painter.drawLine(QLineF(8, 7.25, 8, 11));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawEllipse(QPointF(8, 4.9), 0.95, 0.95);
}

void paintClose(QPainter& painter, const QColor& colour)
{
    painter.setPen(stroke(colour, 1.6));
    painter.drawLine(QLineF(4, 4, 12, 12));
    painter.drawLine(QLineF(12, 4, 4, 12));
}

void paintMenuBar(QPainter& painter, const QColor& colour)
{
    const QRectF screen(1.25, 2.75, 13.5, 10.5);
    painter.setPen(QPen(colour, 1.5));
    painter.drawRoundedRect(screen, 2, 2);
    painter.setClipRect(QRectF(0, 0, kGrid, 6.25));
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawRoundedRect(screen, 2, 2);
}

void paintCoin(QPainter& painter, const Theme& theme)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(theme.green);
    painter.drawEllipse(QPointF(8, 8), 7, 7);

    QPainterPath dollar({10.4, 6.2});
    dollar.cubicTo(10.2, 5.2, 9.3, 4.7, 8, 4.7);
    dollar.cubicTo(6.6, 4.7, 5.6, 5.3, 5.6, 6.3);
    dollar.cubicTo(5.6, 8.5, 10.5, 7.3, 10.5, 9.6);
    dollar.cubicTo(10.5, 10.6, 9.5, 11.3, 8, 11.3);
    dollar.cubicTo(6.6, 11.3, 5.7, 10.7, 5.5, 9.7);
    dollar.moveTo(8, 3.2);
    dollar.lineTo(8, 4.7);
    dollar.moveTo(8, 11.3);
    dollar.lineTo(8, 12.8);
    painter.strokePath(dollar, stroke(theme.window, 1.3));
}

void paintBolt(QPainter& painter, const QColor& colour)
{
    painter.setPen(Qt::NoPen);
    painter.setBrush(colour);
    painter.drawPolygon(QPolygonF {{9.6, 1}, {3.2, 9.1}, {7.1, 9.1}, {6.4, 15}, {12.8, 6.9}, {8.9, 6.9}});
}

} // namespace

void paintSymbol(QPainter& painter, const QRectF& box, Symbol symbol, const Theme& theme)
{
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setBrush(Qt::NoBrush);
    painter.translate(box.topLeft());
    painter.scale(box.width() / kGrid, box.height() / kGrid);
    switch (symbol) {
    case Symbol::info:
        paintInfo(painter, theme.secondaryText);
        break;
    case Symbol::close:
        paintClose(painter, theme.secondaryText);
        break;
    case Symbol::menuBar:
        paintMenuBar(painter, theme.secondaryText);
        break;
    case Symbol::coin:
        paintCoin(painter, theme);
        break;
    case Symbol::bolt:
        paintBolt(painter, theme.secondaryText);
        break;
    }
    painter.restore();
}

} // namespace orvella
