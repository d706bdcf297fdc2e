#include "ui/popover/StatusItemAnchor.h"

#include "platform/StatusItem.h"

namespace orvella {

namespace {

constexpr int kGap = 2;

} // namespace

std::function<std::optional<PopoverAnchor>()> statusItemAnchor(const StatusItem& item)
{
    return [&item]() -> std::optional<PopoverAnchor> {
        const auto place = item.place();
        return place ? std::optional(PopoverAnchor {*place, kGap}) : std::nullopt;
    };
}

} // namespace orvella
