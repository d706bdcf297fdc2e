#include "platform/linux/item/PanelTone.h"

#include "platform/DarkBackground.h"

#include <algorithm>

namespace orvella {

PanelTone panelTone(const QStringList& desktops, const std::optional<QColor>& window)
{
    // GNOME's bar is dark under light applications too.
    if (desktops.contains(QLatin1String("GNOME"), Qt::CaseInsensitive))
        return PanelTone::dark;
    if (!window)
        return PanelTone::unknown;
    return isDarkBackground(*window) ? PanelTone::dark : PanelTone::light;
}

QColor statusColour(StatusAppearance::Tone tone, PanelTone panel)
{
    const bool isGreen = tone == StatusAppearance::Tone::green;
    switch (panel) {
    case PanelTone::dark:
        return isGreen ? QColor(0x4C, 0xD4, 0x84) : QColor(0xF1, 0xF3, 0xF5);
    case PanelTone::light:
        return isGreen ? QColor(0x0B, 0x7A, 0x3E) : QColor(0x1B, 0x1E, 0x23);
    case PanelTone::unknown:
        break;
    }
    return isGreen ? QColor(0x1B, 0x9E, 0x4B) : QColor(0x80, 0x80, 0x80);
}

} // namespace orvella
