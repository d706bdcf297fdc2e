#include "platform/SystemPlatform.h"

#include "base/ApplicationId.h"
#include "base/Clock.h"
#include "base/TerminationSignals.h"
#include "platform/linux/AutostartLoginItem.h"
#include "platform/linux/FileSecretStore.h"
#include "platform/linux/FileSettingsStore.h"
#include "platform/linux/IcuViewerLocale.h"
#include "platform/linux/LinuxDevice.h"
#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/SystemSecretStore.h"
#include "platform/linux/X11RunningApplications.h"
#include "platform/linux/XdgBrowser.h"
#include "platform/linux/XdgDirectories.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QProcessEnvironment>

namespace orvella {

namespace {

/// What the session starts at the next login.
QStringList command(const std::optional<QString>& profile)
{
    QStringList words {QCoreApplication::applicationFilePath()};
    if (profile)
        words << QStringLiteral("--profile") << QDir().absoluteFilePath(*profile);
    return words;
}

/// With a profile the viewer's keyring is left alone.
std::unique_ptr<SecretStore> secretStore(Clock& clock, const QString& folder, bool hasProfile)
{
    if (hasProfile)
        return std::make_unique<FileSecretStore>(folder);
    return std::make_unique<SystemSecretStore>(clock, folder);
}

} // namespace

struct SystemPlatform::Services {
    Services(const std::optional<QString>& profile, const std::vector<OverlaySettings::Entry>& overlays)
        : directories(environment, profile)
        , settingsFile(directories.config() + QStringLiteral("/settings.json"))
        , settings(settingsFile, overlays)
        , secrets(secretStore(clock, directories.state(), profile.has_value()))
        , loginItem(directories.autostart(), command(profile))
        , applications(environment, directories.applications())
    {
    }

    TerminationSignals endsByTheSession;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    XdgDirectories directories;
    SystemClock clock;
    FileSettingsStore settingsFile;
    OverlaySettings settings;
    std::unique_ptr<SecretStore> secrets;
    AutostartLoginItem loginItem;
    IcuViewerLocale locale {environment};
    LinuxDevice device;
    X11RunningApplications applications;
    XdgBrowser browser;
    StatusNotifierItem statusItem {QDBusConnection::sessionBus(), kApplicationId};
};

SystemPlatform::SystemPlatform(
    const std::optional<QString>& profile, const std::vector<OverlaySettings::Entry>& overlays)
    : m_services(std::make_unique<Services>(profile, overlays))
{
}

SystemPlatform::~SystemPlatform() = default;

Platform SystemPlatform::lend()
{
    auto& services = *m_services;
    return {services.clock, services.settings, *services.secrets, services.loginItem, services.locale, services.device,
        services.applications, services.browser, services.statusItem};
}

} // namespace orvella
