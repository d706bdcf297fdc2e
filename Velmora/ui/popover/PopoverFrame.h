#pragma once

#include "ui/popover/Bubble.h"

#include <QImage>
#include <QMargins>
#include <QRegion>

namespace orvella {

/// What a popover has around its content, in points from the top left corner of its window.
class PopoverFrame final {
public:
    enum class Kind {
        /// A bubble with round corners, where a window can be transparent beside it.
        bubbleWithShadow,
        plainBubble,
        /// The desktop gives the window its own.
        ordinaryWindow,
    };

    [[nodiscard]] Kind kind() const { return m_kind; }
    [[nodiscard]] bool isOrdinaryWindow() const { return m_kind == Kind::ordinaryWindow; }
    [[nodiscard]] bool hasShadow() const { return m_kind == Kind::bubbleWithShadow; }
    void setKind(Kind kind) { m_kind = kind; }
    void setBubble(const Bubble& bubble) { m_bubble = bubble; }

    /// The room that it takes around the content.
    [[nodiscard]] QMargins margins() const;
    /// The content and what is painted around it: all that is left of a window that cannot be transparent.
    [[nodiscard]] QRegion coveredRegion() const;
    /// Where clicks are meant for the popover: one on the shadow is meant for what is under it.
    [[nodiscard]] QRegion inputRegion() const;

    /// `scale` is the number of device pixels in a point.
    void castShadow(qreal scale, const Theme& theme);
    void dropShadow();

    /// `window` is what there is to paint on.
    void paint(QPainter& painter, const QRect& window, const Theme& theme) const;

private:
    /// Around the content, whose top left corner is at the origin.
    [[nodiscard]] QPainterPath shape() const;
    /// From the corner of the window to that of the content.
    [[nodiscard]] QPoint offset() const;

    Kind m_kind = Kind::plainBubble;
    Bubble m_bubble;
    QImage m_shadow;
};

} // namespace orvella
