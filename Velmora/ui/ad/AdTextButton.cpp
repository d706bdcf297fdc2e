#include "ui/ad/AdTextButton.h"

#include "ui/look/LineBox.h"

#include <QFontMetricsF>
#include <QStyle>

#include <algorithm>
#include <cmath>

namespace orvella {

namespace {

constexpr qreal kRingRadius = 3;

/// What the neighbours may have taken because widths are whole: a text that lacks no more is shown whole.
constexpr qreal kRounding = 2;

} // namespace

AdTextButton::AdTextButton(const Look& look, QString body, int targetHeight)
    : Control(look, ReturnKey::clicks)
    , m_body(std::move(body))
    , m_targetHeight(targetHeight)
{
    setCursor(Qt::PointingHandCursor);
    setSizePolicy(QSizePolicy::Ignored, QSizePolicy::Fixed);
}

QMargins AdTextButton::reach() const
{
    const auto line = look().lineHeight(TypeStyle::bodyStrong);
    const auto above = std::max(0, (m_targetHeight - line) / 2);
    return {kRingReach, above, kRingReach, std::max(0, m_targetHeight - line - above)};
}

QSize AdTextButton::sizeHint() const
{
    const QFontMetricsF metrics(look().font(TypeStyle::bodyStrong), this);
    return QSize(
        static_cast<int>(std::ceil(metrics.horizontalAdvance(m_body))), look().lineHeight(TypeStyle::bodyStrong))
        .grownBy(reach());
}

void AdTextButton::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const QRectF box = place();
    painter.setFont(look().font(TypeStyle::bodyStrong));
    painter.setPen(theme().text);
    const QFontMetricsF metrics(painter.font(), this);
    const auto text = metrics.elidedText(m_body, Qt::ElideRight, box.width() + kRounding);
    paintLine(painter, box, text, textDirection(text, layoutDirection()),
        QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft));
    paintRing(painter, box, kRingRadius);
}

} // namespace orvella
