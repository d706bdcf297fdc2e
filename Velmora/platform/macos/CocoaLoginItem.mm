#include "platform/macos/CocoaLoginItem.h"

#include "platform/macos/CocoaObjects.h"

#import <ServiceManagement/ServiceManagement.h>

namespace orvella {

namespace {

using Text = std::optional<std::string>;

std::string wordsOf(NSError* _Nullable error)
{
    return text(error.localizedDescription).value_or(std::string());
}

class LoginItem final : public CocoaLoginItem {
public:
    Text registerItem() override
    {
        NSError* error = nil;
        return [SMAppService.mainAppService registerAndReturnError:&error] ? Text() : wordsOf(error);
    }

    Text unregisterItem() override
    {
        NSError* error = nil;
        return [SMAppService.mainAppService unregisterAndReturnError:&error] ? Text() : wordsOf(error);
    }

    Status status() const override
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
