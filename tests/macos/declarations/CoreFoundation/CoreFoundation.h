// Written from the public documentation of Core Foundation; see ../README.md.
#pragma once

#include <cstdint>

#pragma clang assume_nonnull begin

extern "C" {

using Boolean = unsigned char;
using CFIndex = long;
using CFTypeID = unsigned long;

// A name that ends in "Ref" is what the analyzer knows reference-counted objects by.
typedef const void* CFTypeRef;
typedef const struct __attribute__((objc_bridge(NSString))) __CFString* CFStringRef;
typedef const struct __attribute__((objc_bridge(NSArray))) __CFArray* CFArrayRef;
typedef const struct __attribute__((objc_bridge(NSDictionary))) __CFDictionary* CFDictionaryRef;

void CFRelease(CFTypeRef object);

} // extern "C"

#pragma clang assume_nonnull end
