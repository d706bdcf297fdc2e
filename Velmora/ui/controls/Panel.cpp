#include "ui/controls/Panel.h"

#include <QPainter>

namespace orvella {

Panel::Panel(const Look& look, QColor Theme::* fill, int radius)
    : m_look(look)
    , m_fill(fill)
    , m_radius(radius)
{
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void Panel::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_look.theme().*m_fill);
    painter.drawRoundedRect(rect(), m_radius, m_radius);
}

} // namespace orvella
