#include "platform/macos/MacDevice.h"

#include "platform/macos/CocoaWorkspace.h"
#include "platform/macos/Texts.h"

namespace orvella {

MacDevice::MacDevice(const CocoaWorkspace& workspace)
    : m_workspace(workspace)
{
}

std::optional<QString> MacDevice::name() const
{
    return shared(m_workspace.computerName());
}

std::optional<QString> MacDevice::applicationVersion() const
{
    return shared(m_workspace.applicationVersion());
}

} // namespace orvella
