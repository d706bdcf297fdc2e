#include "ui/ad/CountdownGauge.h"

#include "ui/ad/GaugeAccessible.h"
#include "ui/look/LineBox.h"

#include <QPainter>

#include <algorithm>
#include <utility>

namespace orvella {

namespace {

constexpr int kSize = 22;
constexpr qreal kRadius = 10;
constexpr qreal kStroke = 2;
constexpr qreal kTrackOpacity = 0.2;
// Angles of the toolkit: sixteenths of a degree, against the clock, from three o'clock.
constexpr int kTwelveOClock = 90 * 16;
constexpr qreal kWholeTurn = 360 * 16;

} // namespace

CountdownGauge::CountdownGauge(const Look& look, qint64 total)
    : m_look(look)
    , m_total(total)
    , m_remaining(total)
    , m_closed(look, this, 0)
{
    GaugeAccessible::install();
    setFixedSize(kSize, kSize);
    setAccessibleName(tr("Ad time remaining"));
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

void CountdownGauge::setRemaining(qint64 remaining)
{
    const auto before = std::exchange(m_remaining, remaining);
    if (before == remaining)
        return;
    m_closed.glideTo(fraction(remaining, m_total));
    update();
    const auto half = m_total / 2;
    const bool isHalfWay = before > half && remaining <= half;
    const bool isEnd = before > 0 && remaining <= 0;
    if (isHalfWay || isEnd)
        announce();
}

double CountdownGauge::fraction(qint64 remaining, qint64 total)
{
    const auto watched = std::max(0.0, static_cast<double>(total) - static_cast<double>(remaining));
    return watched / static_cast<double>(std::max<qint64>(total, 1));
}

void CountdownGauge::showEvent(QShowEvent* event)
{
    QWidget::showEvent(event);
    if (!std::exchange(m_isStartAnnounced, true))
        announce();
}

void CountdownGauge::paintEvent(QPaintEvent* /*event*/)
{
    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    const auto& theme = m_look.theme();
    const QRectF circle(width() / 2.0 - kRadius, height() / 2.0 - kRadius, 2 * kRadius, 2 * kRadius);
    painter.setOpacity(kTrackOpacity);
    painter.setPen(QPen(theme.secondaryText, kStroke));
    painter.drawEllipse(circle);
    painter.setOpacity(1);
    if (const auto closed = std::min(m_closed.value(), 1.0); closed > 0) {
        painter.setPen(QPen(theme.ink, kStroke, Qt::SolidLine, Qt::RoundCap));
        painter.drawArc(circle, kTwelveOClock, static_cast<int>(-closed * kWholeTurn));
    }
    painter.setFont(m_look.font(TypeStyle::gaugeNumber));
    painter.setPen(theme.text);
    paintLine(painter, rect(), QString::number(m_remaining), Qt::LeftToRight, Qt::AlignHCenter);
}

void CountdownGauge::announce()
{
    QAccessibleValueChangeEvent event(this, QVariant(static_cast<qlonglong>(m_remaining)));
    QAccessible::updateAccessibility(&event);
    Q_EMIT announced(m_remaining);
}

} // namespace orvella
