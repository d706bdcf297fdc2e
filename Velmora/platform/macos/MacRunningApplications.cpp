#include "platform/macos/MacRunningApplications.h"

#include "platform/macos/CocoaWorkspace.h"
#include "platform/macos/Texts.h"

namespace orvella {

namespace {

/// Others live in the menu bar only, or have no face at all.
constexpr std::int64_t kRegular = 0;

} // namespace

MacRunningApplications::MacRunningApplications(const CocoaWorkspace& workspace)
    : m_workspace(workspace)
{
}

std::vector<RunningApplication> MacRunningApplications::list() const
{
    std::vector<RunningApplication> result;
    for (const auto& application : m_workspace.runningApplications()) {
        result.push_back({
            .isRegular = application.activationPolicy == kRegular,
            .identifier = shared(application.bundleIdentifier),
            .name = shared(application.localizedName),
        });
    }
    return result;
}

} // namespace orvella
