#include "ui/look/Glide.h"

#include "ui/look/Look.h"

#include <QWidget>

namespace orvella {

namespace {

constexpr int kMilliseconds = 200;

} // namespace

Glide::Glide(const Look& look, QWidget* widget, qreal value)
    : m_look(look)
    , m_widget(widget)
    , m_value(value)
{
    m_animation.setDuration(kMilliseconds);
    QObject::connect(&m_animation, &QVariantAnimation::valueChanged, widget, [this](const QVariant& step) {
        m_value = step.toReal();
        m_widget->update();
    });
}

void Glide::glideTo(qreal value)
{
    if (m_look.isMotionReduced() || !m_widget->isVisible()) {
        jumpTo(value);
        return;
    }
    const bool isUnderWay = m_animation.state() == QAbstractAnimation::Running;
    if ((isUnderWay ? m_animation.endValue().toReal() : m_value) == value)
        return;
    m_animation.stop();
    m_animation.setStartValue(m_value);
    m_animation.setEndValue(value);
    m_animation.start();
}

void Glide::jumpTo(qreal value)
{
    m_animation.stop();
    m_value = value;
    m_widget->update();
}

} // namespace orvella
