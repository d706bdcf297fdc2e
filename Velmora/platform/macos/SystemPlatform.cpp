#include "platform/SystemPlatform.h"

#include "base/ApplicationId.h"
#include "base/Clock.h"
#include "platform/macos/CocoaApplication.h"
#include "platform/macos/CocoaForeground.h"
#include "platform/macos/CocoaLoginItem.h"
#include "platform/macos/CocoaSecrets.h"
#include "platform/macos/CocoaSettings.h"
#include "platform/macos/CocoaStatusItem.h"
#include "platform/macos/CocoaUpdater.h"
#include "platform/macos/MacBrowser.h"
#include "platform/macos/MacDesktopLook.h"
#include "platform/macos/MacDevice.h"
#include "platform/macos/MacForegroundFacts.h"
#include "platform/macos/MacInstance.h"
#include "platform/macos/MacLoginItem.h"
#include "platform/macos/MacProxies.h"
#include "platform/macos/MacRunningApplications.h"
#include "platform/macos/MacSecretStore.h"
#include "platform/macos/MacSettingsStore.h"
#include "platform/macos/MacStatusItem.h"
#include "platform/macos/MacSystemReport.h"
#include "platform/macos/MacUpdater.h"
#include "platform/macos/MacViewerLocale.h"
#include "platform/macos/MacWindowSystem.h"

#include <QCryptographicHash>
#include <QDir>

namespace orvella {

namespace {

/// What the names of a profile's things end in: its folder, in short. A Mac keeps defaults and passwords by names.
QString suffixOf(const std::optional<QString>& profile)
{
    constexpr qsizetype kEnough = 16;
    if (!profile)
        return {};
    const auto path = QDir(*profile).absolutePath().toUtf8();
    const auto hash = QCryptographicHash::hash(path, QCryptographicHash::Sha256).toHex();
    return u'.' + QString::fromLatin1(hash.first(kEnough));
}

std::optional<std::string> suiteOf(const QString& suffix)
{
    return suffix.isEmpty() ? std::nullopt : std::optional((kApplicationId + suffix).toStdString());
}

} // namespace

struct SystemPlatform::Services {
    Services(const std::optional<QString>& profile, const std::vector<OverlaySettings::Entry>& overlays)
        : suffix(suffixOf(profile))
        , settings(defaults, overlays)
    {
        if (!application->isThere())
            qFatal("The program needs its application object before the services of the system.");
        // At every launch, and before there is anything in the menu bar.
        application->becomeAccessory();
    }

    QString suffix;
    std::unique_ptr<CocoaApplication> application = CocoaApplication::make();
    std::unique_ptr<CocoaForeground> windowServer = CocoaForeground::make();
    std::unique_ptr<CocoaLoginItem> cocoaLoginItem = CocoaLoginItem::make();
    std::unique_ptr<CocoaSecrets> cocoaSecrets = CocoaSecrets::make();
    std::unique_ptr<CocoaSettings> cocoaSettings = CocoaSettings::make(suiteOf(suffix));
    std::unique_ptr<CocoaStatusItem> cocoaStatusItem = CocoaStatusItem::make();
    std::unique_ptr<CocoaUpdater> cocoaUpdater = CocoaUpdater::make();
    std::unique_ptr<CocoaWorkspace> workspace = CocoaWorkspace::make();
    SystemClock clock;
    MacSettingsStore defaults {*cocoaSettings};
    OverlaySettings settings;
    MacSecretStore secrets {*cocoaSecrets, suffix};
    MacLoginItem loginItem {*cocoaLoginItem};
    MacViewerLocale locale {*workspace};
    MacDevice device {*workspace};
    MacRunningApplications applications {*workspace};
    MacBrowser browser {*workspace};
    MacStatusItem statusItem {*cocoaStatusItem};
    MacWindowSystem windows {*application, *cocoaStatusItem};
    MacDesktopLook look {*workspace};
    MacForegroundFacts foreground {*windowServer};
    MacUpdater updater {*cocoaUpdater};
    MacSystemReport report {*cocoaUpdater};
    MacProxies proxies;
    MacInstance instance {
        *application, *workspace, suffix.isEmpty() ? MacInstance::Scope::viewer : MacInstance::Scope::profile};
};

/// Qt would bring the program to the front at its start, which is not for a program that starts at login.
void SystemPlatform::prepareProcess()
{
    qputenv("QT_MAC_DISABLE_FOREGROUND_APPLICATION_TRANSFORM", "1");
}

SystemPlatform::SystemPlatform(
    const std::optional<QString>& profile, const std::vector<OverlaySettings::Entry>& overlays)
    : m_services(std::make_unique<Services>(profile, overlays))
{
}

SystemPlatform::~SystemPlatform() = default;

Platform SystemPlatform::lend()
{
    auto& services = *m_services;
    return {services.clock, services.settings, services.secrets, services.loginItem, services.locale, services.device,
        services.applications, services.browser, services.statusItem, services.windows, services.look,
        services.foreground, services.updater, services.report, services.proxies};
}

Instance& SystemPlatform::instance()
{
    return m_services->instance;
}

} // namespace orvella
