#pragma once

namespace orvella {

/// Checks for newer versions of the program, and shows what it finds.
class Updater {
public:
    virtual ~Updater() = default;

    /// Begins to check on the system's own schedule.
    virtual void start() = 0;
    /// Checks now, because the viewer asks.
    virtual void checkForUpdates() = 0;
};

} // namespace orvella
