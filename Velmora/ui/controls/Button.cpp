#include "ui/controls/Button.h"

#include "ui/look/LineBox.h"

#include <QFontMetricsF>

#include <cmath>

namespace orvella {

namespace {

constexpr int kHeight = 28;
constexpr int kPadding = 12;
constexpr qreal kRadius = 6;

} // namespace

Button::Button(const Look& look, Kind kind, const QString& text)
    : Control(look)
    , m_kind(kind)
{
    setText(text);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

void Button::setLeastWidth(int points)
{
    m_leastWidth = points;
    updateGeometry();
}

QMargins Button::reach() const
{
    return {kRingReach, kRingReach, kRingReach, kRingReach};
}

QSize Button::sizeHint() const
{
    const QFontMetricsF metrics(look().font(style()), this);
    const auto text = static_cast<int>(std::ceil(metrics.horizontalAdvance(this->text())));
    // The outline lies inside and takes a point on either side.
    const auto width = std::max(m_leastWidth, text + 2 * (kPadding + 1));
    return QSize(width, look().scaled(kHeight)).grownBy(reach());
}

void Button::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = place();
    if (m_kind == Kind::plain) {
        painter.setPen(QPen(theme().buttonEdge, 1));
        painter.setBrush(face());
        painter.drawRoundedRect(box.adjusted(0.5, 0.5, -0.5, -0.5), kRadius - 0.5, kRadius - 0.5);
    } else {
        painter.setPen(Qt::NoPen);
        painter.setBrush(face());
        painter.drawRoundedRect(box, kRadius, kRadius);
    }
    painter.setFont(look().font(style()));
    painter.setPen(m_kind == Kind::prominent ? theme().onAccent : theme().text);
    paintLine(painter, box, text(), textDirection(text(), layoutDirection()), Qt::AlignHCenter);
    paintRing(painter, box, kRadius);
}

TypeStyle Button::style() const
{
    return m_kind == Kind::prominent ? TypeStyle::bodyStrong : TypeStyle::body;
}

QColor Button::face() const
{
    const bool isProminent = m_kind == Kind::prominent;
    if (isDown())
        return isProminent ? theme().accentPressed : theme().buttonPressed;
    if (underMouse())
        return isProminent ? theme().accentHovered : theme().buttonHovered;
    return isProminent ? theme().accent : theme().button;
}

} // namespace orvella
