#include "ui/popover/PopoverFrame.h"

#include "ui/look/Theme.h"
#include "ui/popover/Shadow.h"

#include <QPainter>

namespace orvella {

QMargins PopoverFrame::margins() const
{
    switch (m_kind) {
    case Kind::bubbleWithShadow:
        return kShadowMargins;
    case Kind::plainBubble: {
        // The outline takes a point outside of the content.
        const bool isUp = m_bubble.arrow == Bubble::Arrow::up;
        const bool isDown = m_bubble.arrow == Bubble::Arrow::down;
        return {1, isUp ? kArrowHeight + 1 : 1, 1, isDown ? kArrowHeight + 1 : 1};
    }
    case Kind::ordinaryWindow:
        break;
    }
    return {};
}

QRegion PopoverFrame::coveredRegion() const
{
    // The outline lies half a point outside and is one point wide.
    QPainterPathStroker stroker(QPen(Qt::black, 1));
    const auto whole = shape().united(stroker.createStroke(shape())).translated(offset());
    return QRegion(whole.toFillPolygon().toPolygon());
}

QRegion PopoverFrame::inputRegion() const
{
    return QRegion(shape().translated(offset()).toFillPolygon().toPolygon());
}

void PopoverFrame::castShadow(qreal scale, const Theme& theme)
{
    m_shadow = shadow(shape(), m_bubble.size, scale, theme);
}

void PopoverFrame::dropShadow()
{
    m_shadow = {};
}

void PopoverFrame::paint(QPainter& painter, const QRect& window, const Theme& theme) const
{
    if (isOrdinaryWindow()) {
        painter.fillRect(window, theme.surface);
        return;
    }
    if (hasShadow())
        painter.drawImage(0, 0, m_shadow);
    painter.translate(offset());
    paintBubble(painter, shape(), theme);
}

QPainterPath PopoverFrame::shape() const
{
    return outline(m_bubble, hasShadow() ? Corners::round : Corners::square);
}

QPoint PopoverFrame::offset() const
{
    return {margins().left(), margins().top()};
}

} // namespace orvella
