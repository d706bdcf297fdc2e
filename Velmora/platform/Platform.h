#pragma once

namespace orvella {

class Browser;
class Clock;
class DesktopLook;
class Device;
class ForegroundFacts;
class LoginItem;
class Proxies;
class RunningApplications;
class SecretStore;
class SettingsStore;
class StatusItem;
class SystemReport;
class Updater;
class ViewerLocale;
class WindowSystem;

/// The services of the system that the program runs on, lent for its whole life.
struct Platform {
    Clock& clock;
    SettingsStore& settings;
    SecretStore& secrets;
    LoginItem& loginItem;
    ViewerLocale& locale;
    Device& device;
    RunningApplications& applications;
    Browser& browser;
    StatusItem& statusItem;
    WindowSystem& windows;
    DesktopLook& look;
    ForegroundFacts& foreground;
    Updater& updater;
    SystemReport& report;
    Proxies& proxies;
};

} // namespace orvella
