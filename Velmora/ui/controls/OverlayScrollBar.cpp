#include "ui/controls/OverlayScrollBar.h"

#include <QEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionSlider>

#include <utility>

namespace orvella {

using namespace std::chrono_literals;

namespace {

constexpr auto kMoment = 1s;
constexpr qreal kWidth = 4;
constexpr qreal kInset = 4;
constexpr qreal kEndInset = 8;

} // namespace

OverlayScrollBar::OverlayScrollBar(const Look& look, Clock& clock, QWidget* parent)
    : QScrollBar(Qt::Vertical, parent)
    , m_look(look)
    , m_clock(clock)
{
    setAttribute(Qt::WA_Hover);
    setAttribute(Qt::WA_OpaquePaintEvent, false);
    connect(this, &QScrollBar::valueChanged, this, &OverlayScrollBar::showForAMoment);
    connect(&look, &Look::changed, this, qOverload<>(&QWidget::update));
}

OverlayScrollBar::~OverlayScrollBar()
{
    if (m_moment)
        m_clock.stopTimer(*m_moment);
}

void OverlayScrollBar::showForAMoment()
{
    if (const auto running = std::exchange(m_moment, std::nullopt))
        m_clock.stopTimer(*running);
    m_moment = m_clock.startTimer(kMoment, [this] {
        m_moment.reset();
        update();
    });
    update();
}

bool OverlayScrollBar::event(QEvent* event)
{
    if (event->type() == QEvent::HoverEnter || event->type() == QEvent::HoverLeave)
        update();
    return QScrollBar::event(event);
}

void OverlayScrollBar::paintEvent(QPaintEvent* /*event*/)
{
    if (maximum() <= minimum() || !(m_moment || underMouse() || isSliderDown()))
        return;
    const auto travel = height() - 2 * kEndInset;
    const auto whole = maximum() - minimum() + pageStep();
    const auto length = travel * pageStep() / whole;
    const auto top = kEndInset + (travel - length) * (value() - minimum()) / (maximum() - minimum());
    const auto left = layoutDirection() == Qt::RightToLeft ? kInset : width() - kInset - kWidth;

    QPainter painter(this);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(Qt::NoPen);
    painter.setBrush(m_look.theme().scrollBar);
    painter.drawRoundedRect(QRectF(left, top, kWidth, length), kWidth / 2, kWidth / 2);
}

} // namespace orvella
