#include "platform/linux/item/PanelToneWatch.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>

#include <utility>

namespace orvella {

namespace {

std::optional<QColor> desktopWindowColour()
{
    // Where the desktop gives no palette, Qt fills in its own; its window colour says nothing about the panel.
    constexpr QColor kToolkitWindow(0xEF, 0xEF, 0xEF);
    const auto window = QGuiApplication::palette().color(QPalette::Window);
    if (window == kToolkitWindow)
        return std::nullopt;
    return window;
}

PanelTone currentTone()
{
    return panelTone(qEnvironmentVariable("XDG_CURRENT_DESKTOP").split(u':'), desktopWindowColour());
}

} // namespace

PanelToneWatch::PanelToneWatch()
    : m_tone(currentTone())
{
    qGuiApp->installEventFilter(this);
}

bool PanelToneWatch::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange) {
        const auto tone = currentTone();
        if (std::exchange(m_tone, tone) != tone)
            Q_EMIT changed();
    }
    return false;
}

} // namespace orvella
