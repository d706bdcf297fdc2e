#pragma once

#include <QVariantAnimation>

class QWidget;

namespace orvella {

class Look;

/// A number that is on its way to another one, for what moves on the screen: 0.2 seconds at an even pace, or at once
/// where the viewer wants no motion. The widget is drawn anew at each step.
class Glide final {
public:
    Glide(const Look& look, QWidget* widget, qreal value);

    [[nodiscard]] qreal value() const { return m_value; }
    void glideTo(qreal value);
    void jumpTo(qreal value);

private:
    const Look& m_look;
    QWidget* m_widget;
    qreal m_value;
    QVariantAnimation m_animation;
};

} // namespace orvella
