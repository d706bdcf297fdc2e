#include "platform/macos/CocoaSecrets.h"

#include "platform/macos/CocoaObjects.h"

#import <Security/Security.h>

namespace orvella {

namespace {

NSMutableDictionary<NSString*, id>* itemOf(const std::string& service, const std::string& account)
{
    return [@ {
        (__bridge NSString*)kSecClass : (__bridge NSString*)kSecClassGenericPassword,
        (__bridge NSString*)kSecAttrService : textObject(service),
        (__bridge NSString*)kSecAttrAccount : textObject(account),
    } mutableCopy];
}

// What the store over this one knows by their numbers.
static_assert(errSecSuccess == 0);
static_assert(errSecItemNotFound == -25300);
static_assert(errSecInteractionNotAllowed == -25308);
static_assert(errSecAuthFailed == -25293);
static_assert(errSecUserCanceled == -128);

/// Its calls come on a thread that has no pool of its own: what they leave behind would stay there.
class Secrets final : public CocoaSecrets {
public:
    Answer read(const std::string& service, const std::string& account) override
    {
        @autoreleasepool {
            auto* const query = itemOf(service, account);
            query[(__bridge NSString*)kSecReturnData] = @YES;
            query[(__bridge NSString*)kSecMatchLimit] = (__bridge NSString*)kSecMatchLimitOne;
            CFTypeRef found = nullptr;
            Answer answer {SecItemCopyMatching((__bridge CFDictionaryRef)query, &found), std::nullopt};
            NSData* const data = CFBridgingRelease(found);
            if (answer.status == errSecSuccess && [data isKindOfClass:NSData.class])
                answer.bytes.emplace(static_cast<const char*>(data.bytes), data.length);
            return answer;
        }
    }

    Status look(const std::string& service, const std::string& account) override
    {
        @autoreleasepool {
            return SecItemCopyMatching((__bridge CFDictionaryRef)itemOf(service, account), nullptr);
        }
    }

    Status add(const std::string& service, const std::string& account, const std::string& bytes) override
    {
        @autoreleasepool {
            auto* const item = itemOf(service, account);
            item[(__bridge NSString*)kSecValueData] = [NSData dataWithBytes:bytes.data() length:bytes.size()];
            return SecItemAdd((__bridge CFDictionaryRef)item, nullptr);
        }
    }

    Status remove(const std::string& service, const std::string& account) override
    {
        @autoreleasepool {
            return SecItemDelete((__bridge CFDictionaryRef)itemOf(service, account));
        }
    }
};

} // namespace

std::unique_ptr<CocoaSecrets> CocoaSecrets::make()
{
    return std::make_unique<Secrets>();
}

} // namespace orvella
