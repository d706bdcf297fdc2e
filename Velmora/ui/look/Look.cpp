#include "ui/look/Look.h"

#include "platform/DarkBackground.h"
#include "platform/DesktopLook.h"

#include <QEvent>
#include <QFontDatabase>
#include <QGuiApplication>
#include <QPalette>
#include <QPointer>

#include <cmath>

namespace orvella {

namespace {

struct Measure {
    int size;
    int line;
    QFont::Weight weight;
    bool isFixedWidth = false;
};

Measure measure(TypeStyle style)
{
    switch (style) {
    case TypeStyle::title2:
        return {17, 22, QFont::DemiBold};
    case TypeStyle::headline:
        return {13, 16, QFont::Bold};
    case TypeStyle::body:
        return {13, 16, QFont::Normal};
    case TypeStyle::bodyStrong:
        return {13, 16, QFont::DemiBold};
    case TypeStyle::balance:
        return {13, 16, QFont::DemiBold, true};
    case TypeStyle::callout:
        return {12, 15, QFont::Normal};
    case TypeStyle::calloutStrong:
        return {12, 15, QFont::DemiBold};
    case TypeStyle::subheadline:
    case TypeStyle::caption2:
        return {11, 14, QFont::DemiBold};
    case TypeStyle::caption:
        return {11, 14, QFont::Normal};
    case TypeStyle::earnings:
        return {11, 14, QFont::DemiBold, true};
    case TypeStyle::gaugeNumber:
        return {8, 8, QFont::DemiBold};
    }
    Q_UNREACHABLE();
}

/// The palette itself where it is dark. Contrast is what counts of the other.
QPalette darkPalette(const QPalette& palette)
{
    if (isDarkBackground(palette.color(QPalette::Window)))
        return palette;
    QPalette dark(Qt::black);
    dark.setColor(QPalette::Link, Qt::cyan);
    dark.setColor(QPalette::Highlight, Qt::white);
    dark.setColor(QPalette::HighlightedText, Qt::black);
    return dark;
}

} // namespace

Look::Look(DesktopLook& desktop)
    : m_desktop(desktop)
    , m_theme(currentTheme())
{
    m_desktop.watch([self = QPointer(this)] {
        if (self)
            self->refresh();
    });
    qGuiApp->installEventFilter(this);
}

bool Look::isMotionReduced() const
{
    return m_desktop.isMotionReduced();
}

QFont Look::font(TypeStyle style) const
{
    const auto wanted = measure(style);
    auto font = wanted.isFixedWidth ? QFontDatabase::systemFont(QFontDatabase::FixedFont) : QGuiApplication::font();
    const auto family = wanted.isFixedWidth ? m_desktop.fixedFontFamily() : m_desktop.fontFamily();
    if (!family.isEmpty())
        font.setFamily(family);
    font.setPixelSize(scaled(wanted.size));
    font.setWeight(wanted.weight);
    font.setItalic(false);
    return font;
}

int Look::lineHeight(TypeStyle style) const
{
    return scaled(measure(style).line);
}

int Look::scaled(int points) const
{
    return static_cast<int>(std::lround(points * m_desktop.textScale()));
}

bool Look::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qGuiApp
        && (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ApplicationFontChange))
        refresh();
    return false;
}

void Look::refresh()
{
    m_theme = currentTheme();
    Q_EMIT changed();
}

Theme Look::currentTheme() const
{
    const auto palette = QGuiApplication::palette();
    if (m_desktop.isHighContrast())
        return Theme::highContrast(m_desktop.scheme() == DesktopLook::Scheme::dark ? darkPalette(palette) : palette);
    switch (m_desktop.scheme()) {
    case DesktopLook::Scheme::light:
        return Theme::light();
    case DesktopLook::Scheme::dark:
        return Theme::dark();
    case DesktopLook::Scheme::unknown:
        break;
    }
    return isDarkBackground(palette.color(QPalette::Window)) ? Theme::dark() : Theme::light();
}

} // namespace orvella
