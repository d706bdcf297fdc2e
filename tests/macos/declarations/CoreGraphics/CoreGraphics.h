// Written from the public documentation of Core Graphics and Quartz Window Services; see ../README.md.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#pragma clang assume_nonnull begin

extern "C" {

typedef uint32_t CGWindowID;
constexpr CGWindowID kCGNullWindowID = 0;

typedef uint32_t CGWindowListOption;
enum : CGWindowListOption {
    kCGWindowListOptionAll = 0,
    kCGWindowListOptionOnScreenOnly = 1,
    kCGWindowListExcludeDesktopElements = 16,
};

extern const CFStringRef kCGWindowOwnerPID;
extern const CFStringRef kCGWindowLayer;
extern const CFStringRef kCGWindowBounds;

CFArrayRef _Nullable CGWindowListCopyWindowInfo(CGWindowListOption option, CGWindowID relativeToWindow);
CFDictionaryRef _Nullable CGSessionCopyCurrentDictionary();

} // extern "C"

#pragma clang assume_nonnull end
