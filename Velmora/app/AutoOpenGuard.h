#pragma once

namespace orvella {

class ForegroundFacts;

/// Whether the screen is in such a state that a window may come up by itself.
class AutoOpenGuard final {
public:
    AutoOpenGuard() = delete;

    /// False while the screen is locked, and while the application in front has a window as large as a whole screen: a
    /// video, a game, a presentation; where windows are not told of, while another program keeps the session awake for
    /// such a thing. What the system does not tell forbids nothing.
    [[nodiscard]] static bool canOpenForegroundWindow(const ForegroundFacts& facts);

    /// Whether the application in front has such a window.
    [[nodiscard]] static bool isScreenCovered(const ForegroundFacts& facts);
};

} // namespace orvella
