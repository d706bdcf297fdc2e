#pragma once

#include "platform/DesktopLook.h"

namespace orvella {

/// What one source says of how things are to look. A default is no wish, so what is not wished for is left open.
struct LookWishes {
    DesktopLook::Scheme scheme = DesktopLook::Scheme::unknown;
    bool isHighContrast = false;
    bool isMotionReduced = false;
    double textScale = 1;
    QString fontFamily = {};
    QString fixedFontFamily = {};

    friend bool operator==(const LookWishes&, const LookWishes&) = default;
};

/// The wishes of two sources, of which the first has the first word.
[[nodiscard]] inline LookWishes joined(const LookWishes& first, const LookWishes& second)
{
    return {
        .scheme = first.scheme != DesktopLook::Scheme::unknown ? first.scheme : second.scheme,
        .isHighContrast = first.isHighContrast || second.isHighContrast,
        .isMotionReduced = first.isMotionReduced || second.isMotionReduced,
        .textScale = first.textScale * second.textScale,
        .fontFamily = first.fontFamily.isEmpty() ? second.fontFamily : first.fontFamily,
        .fixedFontFamily = first.fixedFontFamily.isEmpty() ? second.fixedFontFamily : first.fixedFontFamily,
    };
}

} // namespace orvella
