#pragma once

#include "platform/linux/updater/UpdaterPlugin.h"

#include <QObject>

namespace orvella {

/// A library as the program expects it. What it does is left behind in properties of the application object: how often
/// an updater was made ("updatersMade") and asked ("updatersAsked").
class FittingUpdater final : public QObject, public UpdaterPlugin {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ORVELLA_UPDATER_IID)
    Q_INTERFACES(orvella::UpdaterPlugin)

public:
    [[nodiscard]] std::unique_ptr<Updater> makeUpdater(Clock& clock, WindowSystem& windows) override;
};

} // namespace orvella
