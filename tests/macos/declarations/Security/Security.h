// Written from the public documentation of Keychain Services; see ../README.md.
#pragma once

#include <CoreFoundation/CoreFoundation.h>

#pragma clang assume_nonnull begin

extern "C" {

typedef int32_t OSStatus;
enum : OSStatus {
    errSecSuccess = 0,
    errSecItemNotFound = -25300,
    errSecInteractionNotAllowed = -25308,
    errSecAuthFailed = -25293,
    errSecUserCanceled = -128,
};

extern const CFStringRef kSecClass;
extern const CFStringRef kSecClassGenericPassword;
extern const CFStringRef kSecAttrService;
extern const CFStringRef kSecAttrAccount;
extern const CFStringRef kSecValueData;
extern const CFStringRef kSecReturnData;
extern const CFStringRef kSecMatchLimit;
extern const CFStringRef kSecMatchLimitOne;

OSStatus SecItemCopyMatching(
    CFDictionaryRef query, CFTypeRef _Nullable* _Nullable __attribute__((cf_returns_retained)) result);
OSStatus SecItemAdd(
    CFDictionaryRef attributes, CFTypeRef _Nullable* _Nullable __attribute__((cf_returns_retained)) result);
OSStatus SecItemDelete(CFDictionaryRef query);

} // extern "C"

#pragma clang assume_nonnull end
