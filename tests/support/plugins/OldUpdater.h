#pragma once

#include "platform/linux/updater/UpdaterPlugin.h"

#include <QObject>

namespace orvella {

/// A library of another version of the program. Its code leaves a property behind as soon as it is loaded
/// ("oldUpdaterRan").
class OldUpdater final : public QObject {
    Q_OBJECT
    Q_PLUGIN_METADATA(IID ORVELLA_UPDATER_INTERFACE "0.0.0")
};

} // namespace orvella
