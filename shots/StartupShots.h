#pragma once

#include "Scenes.h"

namespace orvella {

[[nodiscard]] std::vector<Shot> startupShots(DesktopLook::Scheme scheme);

} // namespace orvella
