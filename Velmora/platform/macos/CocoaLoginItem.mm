#include "platform/macos/CocoaLoginItem.h"

#include "platform/macos/CocoaObjects.h"

#import <ServiceManagement/ServiceManagement.h>

namespace orvella {

namespace {

std::optional<std::string> failure(BOOL hasSucceeded, NSError* _Nullable error)
{
    return hasSucceeded ? std::nullopt : std::optional(text(error.localizedDescription).value_or(std::string()));
}

class LoginItem final : public CocoaLoginItem {
public:
    std::optional<std::string> registerItem() override
    {
        NSError* error = nil;
        const BOOL hasSucceeded = [SMAppService.mainAppService registerAndReturnError:&error];
        return failure(hasSucceeded, error);
    }

    std::optional<std::string> unregisterItem() override
    {
        NSError* error = nil;
        const BOOL hasSucceeded = [SMAppService.mainAppService unregisterAndReturnError:&error];
        return failure(hasSucceeded, error);
    }

    [[nodiscard]] Status status() const override
    {
        switch (SMAppService.mainAppService.status) {
        case SMAppServiceStatusEnabled:
            return Status::enabled;
        case SMAppServiceStatusRequiresApproval:
            return Status::requiresApproval;
        case SMAppServiceStatusNotFound:
            return Status::notFound;
        case SMAppServiceStatusNotRegistered:
            break;
        }
        return Status::notRegistered;
    }
};

} // namespace

std::unique_ptr<CocoaLoginItem> CocoaLoginItem::make()
{
    return std::make_unique<LoginItem>();
}

} // namespace orvella
