#pragma once

#include "platform/linux/look/LookWishes.h"

#include <QString>

namespace orvella {

/// What the name of a theme tells of its look. Most names tell nothing.
[[nodiscard]] LookWishes themeWishes(const QString& name);

} // namespace orvella
