#pragma once

#include "Scenes.h"

namespace orvella {

[[nodiscard]] std::vector<Shot> controlsShots(DesktopLook::Scheme scheme);

} // namespace orvella
