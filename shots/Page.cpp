#include "Page.h"

#include "platform/linux/item/PanelTone.h"
#include "platform/linux/item/TrayGlyph.h"

#include <QApplication>
#include <QPainter>
#include <QWidget>

namespace orvella {

namespace {

constexpr qreal kScale = 2;
constexpr int kGlyph = 22;
constexpr int kCaptionSize = 11;

} // namespace

Page::Page(QSize size, DesktopLook::Scheme scheme, QPoint origin)
    : m_size(size)
    , m_scheme(scheme)
    , m_origin(origin)
    , m_image((QSizeF(size) * kScale).toSize(), QImage::Format_ARGB32_Premultiplied)
{
    m_image.setDevicePixelRatio(kScale);
    m_image.fill(isDark() ? QColor(0x0E, 0x0F, 0x11) : QColor(0xCD, 0xD3, 0xDC));
}

void Page::addBar(Bar bar, int centre, bool isAdReady)
{
    const int top = bar == Bar::above ? 0 : m_size.height() - kBarHeight;
    fill({0, top, m_size.width(), kBarHeight}, isDark() ? QColor(0x1C, 0x1D, 0x20) : QColor(0xF2, 0xF3, 0xF5));
    const auto tone = isAdReady ? StatusAppearance::Tone::green : StatusAppearance::Tone::label;
    const auto colour = statusColour(tone, isDark() ? PanelTone::dark : PanelTone::light);
    auto glyph = drawTrayGlyph(isAdReady ? TrayGlyph::dollarAd : TrayGlyph::dollar, kGlyph * 2, colour);
    glyph.setDevicePixelRatio(kScale);
    addImage(glyph, QPointF(centre - kGlyph / 2.0, top + (kBarHeight - kGlyph) / 2.0));
}

void Page::addWindow(QWidget& window)
{
    addWidget(window, window.pos() - m_origin);
}

void Page::addWidget(QWidget& widget, QPoint place)
{
    QPixmap picture((QSizeF(widget.size()) * kScale).toSize());
    picture.setDevicePixelRatio(kScale);
    picture.fill(Qt::transparent);
    // Not `grab`: that fills in a background where the window has none.
    widget.render(&picture, {}, {}, QWidget::DrawChildren);
    QPainter(&m_image).drawPixmap(place, picture);
}

void Page::addCaption(const QString& text, QPoint place)
{
    QPainter painter(&m_image);
    auto font = QApplication::font();
    font.setPixelSize(kCaptionSize);
    painter.setFont(font);
    painter.setPen(isDark() ? QColor(0xAD, 0xB4, 0xBE) : QColor(0x59, 0x61, 0x6C));
    painter.drawText(place, text);
}

void Page::addImage(const QImage& image, QPointF place)
{
    QPainter(&m_image).drawImage(place, image);
}

void Page::fill(const QRect& area, const QColor& colour)
{
    QPainter(&m_image).fillRect(area, colour);
}

} // namespace orvella
