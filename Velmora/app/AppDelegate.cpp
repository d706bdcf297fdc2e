#include "app/AppDelegate.h"

#include "app/Diagnosis.h"

namespace orvella {

AppDelegate::AppDelegate(const Platform& platform, Transport& transport)
    : m_platform(platform)
    , m_transport(transport)
{
}

void AppDelegate::applicationDidFinishLaunching()
{
    StatusBarController::prepareStatusItemPlacement(m_platform);
    m_controller = std::make_unique<StatusBarController>(m_platform, m_transport);
    m_errors = std::make_unique<RecentErrors>(m_controller->state(), m_platform.clock);
    QObject::connect(m_controller.get(), &StatusBarController::adFailed, m_errors.get(),
        [this](const Failure& failure) { m_errors->note(failure.description); });
    m_controller->showLaunchWindowIfNeeded();
}

QCoro::Task<QString> AppDelegate::diagnosis() const
{
    return Diagnosis::ofRunning(m_platform, *m_errors);
}

bool AppDelegate::applicationShouldHandleReopen()
{
    if (m_controller)
        m_controller->showLaunchWindow();
    return true;
}

void AppDelegate::perform(Instance::Request request)
{
    switch (request) {
    case Instance::Request::nothing:
        return;
    case Instance::Request::reopen:
    case Instance::Request::showSettings:
        applicationShouldHandleReopen();
        return;
    case Instance::Request::openAd:
        if (m_controller)
            m_controller->openAd();
        return;
    }
}

} // namespace orvella
