#include "platform/macos/MacLoginItem.h"

#include "platform/macos/CocoaLoginItem.h"
#include "platform/macos/Texts.h"

namespace orvella {

namespace {

Result<void> outcome(const std::optional<std::string>& failure)
{
    if (failure)
        return failed(Failure::Kind::refused, QString::fromStdString(*failure));
    return {};
}

} // namespace

MacLoginItem::MacLoginItem(CocoaLoginItem& item)
    : m_item(item)
{
}

Result<void> MacLoginItem::registerItem()
{
    return outcome(m_item.registerItem());
}

Result<void> MacLoginItem::unregisterItem()
{
    return outcome(m_item.unregisterItem());
}

LoginItem::Status MacLoginItem::status() const
{
    switch (m_item.status()) {
    case CocoaLoginItem::Status::enabled:
        return Status::enabled;
    case CocoaLoginItem::Status::requiresApproval:
        return Status::requiresApproval;
    case CocoaLoginItem::Status::notFound:
        return Status::notFound;
    case CocoaLoginItem::Status::notRegistered:
        break;
    }
    return Status::notRegistered;
}

} // namespace orvella
