#include "platform/macos/MacInstance.h"

#include "base/ApplicationId.h"
#include "platform/macos/CocoaApplication.h"
#include "platform/macos/CocoaWorkspace.h"

#include <QCoreApplication>

#include <algorithm>
#include <utility>

namespace orvella {

MacInstance::MacInstance(CocoaApplication& application, const CocoaWorkspace& workspace, Scope scope)
    : m_application(application)
    , m_workspace(workspace)
    , m_scope(scope)
{
}

bool MacInstance::claim(Request /*request*/)
{
    return !running().isThere;
}

void MacInstance::watch(std::function<void(Request)> requested)
{
    m_application.watchReopening([requested = std::move(requested)] { requested(Request::reopen); });
}

Instance::Running MacInstance::running() const
{
    if (m_scope == Scope::profile)
        return {};
    const auto applications = m_workspace.runningApplications();
    const auto isAnother = [own = QCoreApplication::applicationPid()](const CocoaWorkspace::Application& application) {
        return application.bundleIdentifier == kApplicationId.data() && application.process != own;
    };
    return {std::ranges::any_of(applications, isAnother), std::nullopt};
}

} // namespace orvella
