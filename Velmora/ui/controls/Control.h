#pragma once

#include "ui/Compose.h"
#include "ui/look/Look.h"

#include <QEvent>
#include <QFocusEvent>
#include <QKeyEvent>
#include <QPainter>
#include <QPixmap>

namespace orvella {

/// How far from a shape the ring runs that shows where the keyboard is.
inline constexpr int kRingGap = 2;
inline constexpr int kRingWidth = 2;
inline constexpr int kRingReach = kRingGap + kRingWidth;
/// How much is left of the colour of a control that cannot be used.
inline constexpr qreal kDisabledOpacity = 0.42;

/// What the Return key does on a control that has the keyboard, besides what the toolkit makes of it.
enum class ReturnKey { passesOn, clicks };

/// What the controls have in common on top of the toolkit's `Base`, a kind of button: they follow the look, take the
/// keyboard by Tab only, and show that they have it only to those who use it.
template <class Base> class Control : public Base, public Reaching {
public:
    explicit Control(const Look& look, ReturnKey returnKey = ReturnKey::passesOn)
        : m_look(look)
        , m_returnKey(returnKey)
    {
        this->setFocusPolicy(Qt::TabFocus);
        this->setAttribute(Qt::WA_Hover);
        QObject::connect(&look, &Look::changed, this, [this] {
            this->updateGeometry();
            this->update();
        });
    }

protected:
    [[nodiscard]] const Look& look() const { return m_look; }
    [[nodiscard]] const Theme& theme() const { return m_look.theme(); }

    /// The place of the control within the widget, mirrored where the language runs from right to left.
    [[nodiscard]] QRect place() const
    {
        const auto reach = this->reach();
        const bool isRightToLeft = this->layoutDirection() == Qt::RightToLeft;
        return this->rect().adjusted(isRightToLeft ? reach.right() : reach.left(), reach.top(),
            -(isRightToLeft ? reach.left() : reach.right()), -reach.bottom());
    }

    /// Paints what cannot be used as a faint picture of itself: as a whole, so that what lies over something else in it
    /// does not let that shine through.
    template <class Paint> void paintControl(QPainter& painter, const QRect& box, const Paint& paint) const
    {
        if (this->isEnabled()) {
            paint(painter, QRectF(box));
            return;
        }
        const auto scale = this->devicePixelRatioF();
        QPixmap picture((QSizeF(box.size()) * scale).toSize());
        picture.setDevicePixelRatio(scale);
        picture.fill(Qt::transparent);
        QPainter canvas(&picture);
        canvas.setRenderHint(QPainter::Antialiasing);
        paint(canvas, QRectF(QPointF(), box.size()));
        canvas.end();
        painter.setOpacity(kDisabledOpacity);
        painter.drawPixmap(box.topLeft(), picture);
        painter.setOpacity(1);
    }

    /// The ring around a shape, if the viewer has come here by the keyboard.
    void paintRing(QPainter& painter, const QRectF& shape, qreal radius) const
    {
        if (!m_hasRing || !this->hasFocus())
            return;
        constexpr qreal kMiddle = kRingGap + kRingWidth / 2.0;
        painter.setOpacity(1);
        painter.setBrush(Qt::NoBrush);
        painter.setPen(QPen(theme().ink, kRingWidth));
        painter.drawRoundedRect(
            shape.adjusted(-kMiddle, -kMiddle, kMiddle, kMiddle), radius + kMiddle, radius + kMiddle);
    }

    void keyPressEvent(QKeyEvent* event) override
    {
        const bool isReturn = event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter;
        if (m_returnKey == ReturnKey::clicks && isReturn)
            this->click();
        else
            Base::keyPressEvent(event);
    }

    void focusInEvent(QFocusEvent* event) override
    {
        switch (event->reason()) {
        case Qt::MouseFocusReason:
            m_hasRing = false;
            break;
        case Qt::TabFocusReason:
        case Qt::BacktabFocusReason:
        case Qt::ShortcutFocusReason:
        case Qt::OtherFocusReason:
            m_hasRing = true;
            break;
        default:
            break;
        }
        Base::focusInEvent(event);
        this->update();
    }

    void focusOutEvent(QFocusEvent* event) override
    {
        Base::focusOutEvent(event);
        this->update();
    }

private:
    const Look& m_look;
    ReturnKey m_returnKey;
    bool m_hasRing = false;
};

} // namespace orvella
