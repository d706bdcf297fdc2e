#pragma once

#include "Scenes.h"

namespace orvella {

[[nodiscard]] std::vector<Shot> adShots(DesktopLook::Scheme scheme);

} // namespace orvella
