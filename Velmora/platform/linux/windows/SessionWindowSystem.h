#pragma once

#include "platform/WindowSystem.h"

#include <QString>

#include <functional>
#include <memory>

namespace orvella {

/// The window system of the session that the program's windows are in. Needs the QGuiApplication.
///
/// `takeToken` gives out the right to bring a window to the front that came with the viewer's last click, and may be
/// empty. On X11 it is not needed.
[[nodiscard]] std::unique_ptr<WindowSystem> sessionWindowSystem(std::function<QString()> takeToken);

} // namespace orvella
