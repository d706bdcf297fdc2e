#pragma once

#include "platform/RunningApplications.h"

namespace orvella {

class CocoaWorkspace;

/// The applications that the workspace lists.
class MacRunningApplications final : public RunningApplications {
public:
    explicit MacRunningApplications(const CocoaWorkspace& workspace);

    [[nodiscard]] std::vector<RunningApplication> list() const override;

private:
    const CocoaWorkspace& m_workspace;
};

} // namespace orvella
