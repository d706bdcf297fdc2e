#pragma once

#include "platform/Instance.h"

namespace orvella {

class CocoaApplication;
class CocoaWorkspace;

/// The system itself sees to it that an application runs once, and tells it when it is opened again. That is all that
/// it hands over, so no report is asked for from outside.
class MacInstance final : public Instance {
public:
    MacInstance(CocoaApplication& application, const CocoaWorkspace& workspace);

    [[nodiscard]] bool claim(Request request) override;
    void watch(std::function<void(Request)> requested) override;

    void offerReport(std::function<QCoro::Task<QString>()> /*report*/) override {}

    /// Whether another process of the same application is there.
    [[nodiscard]] Running running() const override;

private:
    CocoaApplication& m_application;
    const CocoaWorkspace& m_workspace;
};

} // namespace orvella
