#include "app/AutoOpenGuard.h"

#include "platform/ForegroundFacts.h"

#include <algorithm>

namespace orvella {

namespace {

/// In both directions; some full-screen windows leave out a line or two.
constexpr double kTolerance = 4;
constexpr qint64 kOrdinaryLayer = 0;

/// Deliberate: sizes are compared and not places, so a full-screen window counts on whatever screen it is.
bool covers(const QSizeF& window, const QSizeF& screen)
{
    return screen.width() - kTolerance <= window.width() && screen.height() - kTolerance <= window.height();
}

} // namespace

bool AutoOpenGuard::canOpenForegroundWindow(const ForegroundFacts& facts)
{
    // Being kept awake stands in for the windows where the system does not tell of them.
    return !facts.isScreenLocked().value_or(false) && !facts.isKeptAwakeForViewing().value_or(false)
        && !isScreenCovered(facts);
}

bool AutoOpenGuard::isScreenCovered(const ForegroundFacts& facts)
{
    const auto front = facts.frontApplication();
    if (!front)
        return false;
    const auto windows = facts.windows();
    if (!windows)
        return false;
    const auto screens = facts.screens();
    return std::ranges::any_of(*windows, [&](const ScreenWindow& window) {
        if (window.owner != front || window.layer != kOrdinaryLayer || !window.size)
            return false;
        return std::ranges::any_of(screens, [&](const QSizeF& screen) { return covers(*window.size, screen); });
    });
}

} // namespace orvella
