#include "ui/controls/LinkButton.h"

#include "ui/controls/LinkAccessible.h"
#include "ui/look/LineBox.h"

#include <QFontMetricsF>
#include <QStyle>

#include <cmath>

namespace orvella {

namespace {

constexpr qreal kRingRadius = 3;
// From the baseline.
constexpr qreal kUnderlineOffset = 2.5;

} // namespace

LinkButton::LinkButton(const Look& look, const QString& text)
    : Control(look, ReturnKey::clicks)
{
    LinkAccessible::install();
    setText(text);
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
}

QMargins LinkButton::reach() const
{
    return {kRingReach, kRingReach, kRingReach, kRingReach};
}

QSize LinkButton::sizeHint() const
{
    const QFontMetricsF metrics(look().font(TypeStyle::calloutStrong), this);
    return QSize(
        static_cast<int>(std::ceil(metrics.horizontalAdvance(text()))), look().lineHeight(TypeStyle::calloutStrong))
        .grownBy(reach());
}

void LinkButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = place();
    painter.setFont(look().font(TypeStyle::calloutStrong));
    painter.setPen(theme().ink);
    paintLine(painter, box, text(), textDirection(text(), layoutDirection()),
        QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft));
    if (underMouse()) {
        const QFontMetricsF metrics(painter.font(), this);
        const auto baseline = box.top() + (box.height() + metrics.ascent() - metrics.descent()) / 2;
        const auto line = std::floor(baseline + kUnderlineOffset) + 0.5;
        painter.drawLine(QLineF(box.left(), line, box.right(), line));
    }
    paintRing(painter, box, kRingRadius);
}

} // namespace orvella
