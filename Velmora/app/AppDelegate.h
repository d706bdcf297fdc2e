#pragma once

#include "app/RecentErrors.h"
#include "app/StatusBarController.h"
#include "platform/Instance.h"

#include <memory>

namespace orvella {

/// What the program does when it has been started, and when it is started again.
class AppDelegate final {
public:
    AppDelegate(const Platform& platform, Transport& transport);

    /// The launch, once per run.
    void applicationDidFinishLaunching();
    /// The viewer has started the running program again: the startup window comes to the front, whatever the settings
    /// say. Always true: the system may go on with what it does then.
    bool applicationShouldHandleReopen();
    /// Does what a later start, or a choice in a launcher, asks for. Nothing before the launch.
    void perform(Instance::Request request);

    /// What the report of a fault needs, with the errors of this run. After the launch.
    QCoro::Task<QString> diagnosis() const;

    /// Nothing before the launch.
    [[nodiscard]] StatusBarController* controller() { return m_controller.get(); }

private:
    Platform m_platform;
    Transport& m_transport;
    std::unique_ptr<StatusBarController> m_controller;
    std::unique_ptr<RecentErrors> m_errors;
};

} // namespace orvella
