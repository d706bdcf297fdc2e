#pragma once

#include <memory>

namespace orvella {

/// The update framework in the application's own bundle. Where there is none, nothing happens.
class CocoaUpdater {
public:
    virtual ~CocoaUpdater() = default;

    /// Loads the framework and starts it. Once.
    virtual void start() = 0;
    virtual void checkForUpdates() = 0;
    /// Whether the framework is in the bundle, started or not.
    [[nodiscard]] virtual bool isThere() const = 0;

    [[nodiscard]] static std::unique_ptr<CocoaUpdater> make();
};

} // namespace orvella
