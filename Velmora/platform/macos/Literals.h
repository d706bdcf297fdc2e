#pragma once

#include <array>
#include <string_view>

/// Every text by which the Mac's side means something outside of it, and which no compiler sees through. Those that the
/// shared code has itself are here once more, for a test that holds the two against each other.
namespace orvella::literals {

// The window server. The key is none of its public ones, which have no word for the lock.
inline constexpr const char* kScreenIsLocked = "CGSSessionScreenIsLocked";
inline constexpr const char* kBoundsWidth = "Width";
inline constexpr const char* kBoundsHeight = "Height";

// The menu bar. The system keeps the item's place in the defaults, under keys made of this name.
inline constexpr const char* kStatusItemName = "OrvellaStatusItem";
inline constexpr const char* kPreferredPositionKey = "NSStatusItem Preferred Position OrvellaStatusItem";
inline constexpr const char* kVisibleKey = "NSStatusItem Visible OrvellaStatusItem";
inline constexpr const char* kProgramName = "Orvella";

// The application's bundle.
inline constexpr const char* kVersionKey = "CFBundleShortVersionString";

// Money.
inline constexpr const char* kCurrency = "USD";

// The update framework, which is there at run time or not.
inline constexpr const char* kUpdateFramework = "Sparkle.framework";
inline constexpr const char* kUpdaterClass = "SPUStandardUpdaterController";

/// What the viewer's defaults may hold.
inline constexpr std::array kDefaultsKeys {
    "anonymousMode",
    "appSignalConsent",
    "ageConfirmed",
    "autoOpenAds",
    "showLaunchWindowAtStartup",
    "didConfigureLaunchAtLogin",
    "apiBaseURL",
    kPreferredPositionKey,
    kVisibleKey,
};

/// The keychain's items; of the older service they are only read.
inline constexpr const char* kTokenService = "orvella.device-token";
inline constexpr const char* kOlderTokenService = "quillon.device-token";
inline constexpr const char* kTokenAccount = "default";

/// Methods that AppKit calls only where it finds them: one that is misspelt is never missed.
inline constexpr std::array kDelegateMethods {
    "applicationShouldHandleReopen:hasVisibleWindows:",
    "applicationShouldTerminate:",
    "popoverDidClose:",
};

} // namespace orvella::literals
