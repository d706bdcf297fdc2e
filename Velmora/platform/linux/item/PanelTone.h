#pragma once

#include "platform/StatusItem.h"

#include <QColor>
#include <QStringList>

#include <optional>

namespace orvella {

/// How dark the desktop's panel is, as far as the program can tell.
enum class PanelTone { dark, light, unknown };

/// The tone of the panel of a desktop.
///
/// `desktops`: the names in XDG_CURRENT_DESKTOP. `window`: the window colour that the desktop gives to applications,
/// where it gives one.
[[nodiscard]] PanelTone panelTone(const QStringList& desktops, const std::optional<QColor>& window);

/// The colour of the status item on such a panel. It keeps a contrast of 4.5:1 where the tone is known and of 3:1 on
/// either tone where it is not.
[[nodiscard]] QColor statusColour(StatusAppearance::Tone tone, PanelTone panel);

} // namespace orvella
