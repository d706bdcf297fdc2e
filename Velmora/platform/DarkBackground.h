#pragma once

#include <QColor>

namespace orvella {

/// Whether text on such a background has to be light.
[[nodiscard]] inline bool isDarkBackground(const QColor& background)
{
    constexpr float kMiddle = 0.5F;
    return background.lightnessF() < kMiddle;
}

} // namespace orvella
