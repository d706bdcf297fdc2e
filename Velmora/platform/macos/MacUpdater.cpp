#include "platform/macos/MacUpdater.h"

#include "platform/macos/CocoaUpdater.h"

namespace orvella {

MacUpdater::MacUpdater(CocoaUpdater& updater)
    : m_updater(updater)
{
}

void MacUpdater::start()
{
    m_updater.start();
}

void MacUpdater::checkForUpdates()
{
    m_updater.checkForUpdates();
}

} // namespace orvella
