#pragma once

namespace orvella {

class Browser;
class Clock;
class Device;
class LoginItem;
class RunningApplications;
class SecretStore;
class SettingsStore;
class StatusItem;
class ViewerLocale;

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
};

} // namespace orvella
