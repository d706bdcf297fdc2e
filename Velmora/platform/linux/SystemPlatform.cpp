#include "platform/SystemPlatform.h"

#include "base/ApplicationId.h"
#include "base/Clock.h"
#include "platform/LoginItem.h"
#include "platform/linux/DisplayEnd.h"
#include "platform/linux/IcuViewerLocale.h"
#include "platform/linux/LinuxDevice.h"
#include "platform/linux/LinuxSystemReport.h"
#include "platform/linux/PortalProxies.h"
#include "platform/linux/ProfileFolder.h"
#include "platform/linux/XdgBrowser.h"
#include "platform/linux/applications/LinuxRunningApplications.h"
#include "platform/linux/environment/XdgDirectories.h"
#include "platform/linux/foreground/LinuxForegroundFacts.h"
#include "platform/linux/instance/DBusInstance.h"
#include "platform/linux/item/ActivationTokens.h"
#include "platform/linux/item/LinuxStatusItem.h"
#include "platform/linux/item/SymbolicIcon.h"
#include "platform/linux/login/SystemLoginItem.h"
#include "platform/linux/look/LinuxDesktopLook.h"
#include "platform/linux/secrets/FileSecretStore.h"
#include "platform/linux/secrets/SystemSecretStore.h"
#include "platform/linux/settings/FileSettingsStore.h"
#include "platform/linux/updater/OwnLibrary.h"
#include "platform/linux/updater/PluginUpdater.h"
#include "platform/linux/windows/SessionWindowSystem.h"

#include <QCoreApplication>
#include <QDBusConnection>
#include <QDir>
#include <QProcessEnvironment>

#include <malloc.h>

namespace orvella {

namespace {

/// Whoever is given the same folder is the same program, however it was written.
std::optional<QString> resolved(const std::optional<QString>& profile)
{
    return profile ? std::optional(profileFolder(*profile)) : std::nullopt;
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
        , loginItem(systemLoginItem({environment, directories, QCoreApplication::applicationFilePath(), profile}))
        , applications(environment, directories.applications())
        , statusItem(QDBusConnection::sessionBus(),
              {kApplicationId, symbolicIconName(directories.icons(), kApplicationId)}, activationTokens)
        , instance(QDBusConnection::connectToBus(QDBusConnection::SessionBus, QStringLiteral("instance")),
              {profile, environment, [this](const QString& token) { activationTokens.receive(token); },
                  directories.state() + QStringLiteral("/instance.lock")})
    {
    }

    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    XdgDirectories directories;
    SystemClock clock;
    FileSettingsStore settingsFile;
    OverlaySettings settings;
    std::unique_ptr<SecretStore> secrets;
    std::unique_ptr<LoginItem> loginItem;
    IcuViewerLocale locale {environment};
    LinuxDevice device;
    LinuxRunningApplications applications;
    XdgBrowser browser;
    ActivationTokens activationTokens;
    LinuxStatusItem statusItem;
    std::unique_ptr<WindowSystem> windows = sessionWindowSystem([this] { return activationTokens.take(); });
    LinuxDesktopLook look {QDBusConnection::sessionBus()};
    LinuxForegroundFacts foreground {environment, &QDBusConnection::sessionBus, &QDBusConnection::systemBus};
    PortalProxies proxies {QDBusConnection::sessionBus()};
    QString updaterLibrary = ownLibrary(QStringLiteral("orvella-updater.so"));
    LinuxSystemReport report {environment, QDBusConnection::sessionBus(), updaterLibrary};
    PluginUpdater updater {{updaterLibrary, environment, QCoreApplication::applicationFilePath()}, clock, *windows};
    DBusInstance instance;
};

void SystemPlatform::prepareProcess()
{
    // Threads come and go with the requests. With a heap for each of them, as many as sixteen would fill over a day.
    mallopt(M_ARENA_MAX, 1);
    endInOrderWithDisplay();
    // With more than one monitor Qt leaves the bars out of account unless it is told to believe the window manager.
    if (qEnvironmentVariableIsEmpty("QT_RELY_ON_NET_WORKAREA_ATOM"))
        qputenv("QT_RELY_ON_NET_WORKAREA_ATOM", "1");
}

SystemPlatform::SystemPlatform(
    const std::optional<QString>& profile, const std::vector<OverlaySettings::Entry>& overlays)
    : m_services(std::make_unique<Services>(resolved(profile), overlays))
{
}

SystemPlatform::~SystemPlatform() = default;

Platform SystemPlatform::lend()
{
    auto& services = *m_services;
    return {services.clock, services.settings, *services.secrets, *services.loginItem, services.locale, services.device,
        services.applications, services.browser, services.statusItem, *services.windows, services.look,
        services.foreground, services.updater, services.report, services.proxies};
}

Instance& SystemPlatform::instance()
{
    return m_services->instance;
}

} // namespace orvella
