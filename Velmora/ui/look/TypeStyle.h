#pragma once

namespace orvella {

/// The text styles, from the largest to the smallest. Each has a size and a line of its own, so that a layout is the
/// same under every font.
enum class TypeStyle {
    title2,
    headline,
    body,
    bodyStrong,
    balance,
    callout,
    calloutStrong,
    subheadline,
    caption,
    caption2,
    earnings,
    gaugeNumber,
};

} // namespace orvella
