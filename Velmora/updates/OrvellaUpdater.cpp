#include "updates/OrvellaUpdater.h"

#include "updates/PackageUpdater.h"

namespace orvella {

std::unique_ptr<Updater> OrvellaUpdater::makeUpdater(Clock& clock, WindowSystem& windows)
{
    return std::make_unique<PackageUpdater>(QDBusConnection::systemBus(), clock, windows);
}

} // namespace orvella
