#pragma once

#include "platform/linux/updater/UpdaterPlugin.h"

#include <QObject>

namespace orvella {

/// What is found in the library when it is loaded.
class OrvellaUpdater final : public QObject, public UpdaterPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ORVELLA_UPDATER_IID)
    Q_INTERFACES(orvella::UpdaterPlugin)

public:
    [[nodiscard]] std::unique_ptr<Updater> makeUpdater(Clock& clock, WindowSystem& windows) override;
};

} // namespace orvella
