#pragma once

#include <QColor>

#include <algorithm>
#include <cmath>

namespace orvella {

/// The luminance of a colour, from 0 to 1: https://www.w3.org/TR/WCAG22/#dfn-relative-luminance
[[nodiscard]] inline double luminance(const QColor& colour)
{
    const auto linear = [](double channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// The contrast of two colours, from 1 to 21: https://www.w3.org/TR/WCAG22/#dfn-contrast-ratio
[[nodiscard]] inline double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax({luminance(one), luminance(other)});
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace orvella
