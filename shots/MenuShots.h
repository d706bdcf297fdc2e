#pragma once

#include "Scenes.h"

namespace orvella {

[[nodiscard]] std::vector<Shot> menuShots(DesktopLook::Scheme scheme);

} // namespace orvella
