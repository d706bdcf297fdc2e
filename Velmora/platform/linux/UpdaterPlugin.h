#pragma once

#include <QtPlugin>

#include <memory>

/// The number goes up with every change to this interface or to one of those that it hands over, so that a library of
/// another version is not run.
#define ORVELLA_UPDATER_IID "io.orvella.Orvella.Updater/1"

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
