#pragma once

#include "platform/Platform.h"
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
#include "support/FakeClock.h"
#include "support/FakeCocoa.h"

namespace orvella {

/// The services of a Mac over frameworks that the test plays.
struct FakeMac {
    FakeClock clock;
    FakeCocoaApplication cocoaApplication;
    FakeCocoaForeground windowServer;
    FakeCocoaLoginItem cocoaLoginItem;
    FakeCocoaSecrets keychain;
    FakeCocoaSettings defaults;
    FakeCocoaStatusItem menuBar;
    FakeCocoaUpdater framework;
    FakeCocoaWorkspace workspace;

    MacSettingsStore settings {defaults};
    MacSecretStore secrets {keychain};
    MacLoginItem loginItem {cocoaLoginItem};
    MacViewerLocale locale {workspace};
    MacDevice device {workspace};
    MacRunningApplications applications {workspace};
    MacBrowser browser {workspace};
    MacStatusItem statusItem {menuBar};
    MacWindowSystem windows {cocoaApplication, menuBar};
    MacDesktopLook look {workspace};
    MacForegroundFacts foreground {windowServer};
    MacUpdater updater {framework};
    MacSystemReport report {framework};
    MacProxies proxies;
    MacInstance instance {cocoaApplication, workspace, MacInstance::Scope::viewer};

    [[nodiscard]] Platform lend()
    {
        return {clock, settings, secrets, loginItem, locale, device, applications, browser, statusItem, windows, look,
            foreground, updater, report, proxies};
    }
};

} // namespace orvella
