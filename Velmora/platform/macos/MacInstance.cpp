#include "platform/macos/MacInstance.h"

#include "platform/macos/CocoaApplication.h"

#include <utility>

namespace orvella {

MacInstance::MacInstance(CocoaApplication& application)
    : m_application(application)
{
}

bool MacInstance::claim(Request /*request*/)
{
    return true;
}

void MacInstance::watch(std::function<void(Request)> requested)
{
    m_application.watchReopening([requested = std::move(requested)] { requested(Request::reopen); });
}

} // namespace orvella
