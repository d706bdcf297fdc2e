#pragma once

#include "platform/DesktopLook.h"

#include <QImage>
#include <QPoint>
#include <QSize>

class QWidget;

namespace orvella {

/// One picture: a piece of a desktop with what the program shows on it.
class Page final {
public:
    enum class Bar { none, above, below };

    /// The height of the desktop's bar, in points.
    static constexpr int kBarHeight = 28;

    /// `size` in points. `origin` is where the picture's top left corner lies on the desktop.
    Page(QSize size, DesktopLook::Scheme scheme, QPoint origin = {});

    /// Draws the bar with the status item centred on this line, in points from the left.
    void addBar(Bar bar, int centre, bool isAdReady);
    /// Draws a window where it is on the desktop.
    void addWindow(QWidget& window);
    /// Draws a widget there, with room around it for what reaches beyond its place.
    void addWidget(QWidget& widget, QPoint place);
    void addCaption(const QString& text, QPoint place);
    void addImage(const QImage& image, QPointF place);
    void fill(const QRect& area, const QColor& colour);

    [[nodiscard]] const QImage& image() const { return m_image; }
    [[nodiscard]] bool isDark() const { return m_scheme == DesktopLook::Scheme::dark; }

private:
    QSize m_size;
    DesktopLook::Scheme m_scheme;
    QPoint m_origin;
    QImage m_image;
};

} // namespace orvella
