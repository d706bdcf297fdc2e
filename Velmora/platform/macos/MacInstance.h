#pragma once

#include "platform/Instance.h"

namespace orvella {

class CocoaApplication;
class CocoaWorkspace;

/// The system itself sees to it that an application runs once, and tells it when it is opened again. That is all that
/// it hands over, so no report is asked for from outside. It does not see to it where the viewer wants another process
/// all the same, with `open -n` or from a terminal: that one ends, and the running one is not told.
class MacInstance final : public Instance {
public:
    /// What else runs is seen by the application's identifier, which a process of a profile has, too.
    enum class Scope { viewer, profile };

    MacInstance(CocoaApplication& application, const CocoaWorkspace& workspace, Scope scope);

    /// A profile is always free: nobody can tell its process from others.
    [[nodiscard]] bool claim(Request request) override;
    void watch(std::function<void(Request)> requested) override;

    void offerReport(std::function<QCoro::Task<QString>()> /*report*/) override {}

    /// Whether another process of the same application is there; of a profile that is not known.
    [[nodiscard]] Running running() const override;

private:
    CocoaApplication& m_application;
    const CocoaWorkspace& m_workspace;
    Scope m_scope;
};

} // namespace orvella
