#pragma once

#include <QLatin1StringView>

namespace orvella {

/// The program's one name towards the desktop: of its desktop entry, its icon, its metainfo and on the session bus.
inline constexpr QLatin1StringView kApplicationId {"io.orvella.Orvella"};

} // namespace orvella
