#pragma once

#include "base/Version.h"

#include <QtPlugin>

#include <memory>

/// What the interface is called in every version.
#define ORVELLA_UPDATER_INTERFACE "io.orvella.Orvella.Updater/"

/// With the version of the program, so that a library of another version is not run: this interface, or one of those
/// that it hands over, may be another there.
#define ORVELLA_UPDATER_IID ORVELLA_UPDATER_INTERFACE ORVELLA_VERSION

namespace orvella {

class Clock;
class Updater;
class WindowSystem;

/// What the library of the updater offers the program, which loads it at run time.
class UpdaterPlugin {
public:
    virtual ~UpdaterPlugin() = default;

    /// The clock and the window system must outlive the updater, and the updater must go before the application object.
    [[nodiscard]] virtual std::unique_ptr<Updater> makeUpdater(Clock& clock, WindowSystem& windows) = 0;
};

} // namespace orvella

Q_DECLARE_INTERFACE(orvella::UpdaterPlugin, ORVELLA_UPDATER_IID)
