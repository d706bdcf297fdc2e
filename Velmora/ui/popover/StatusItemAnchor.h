#pragma once

#include "ui/popover/PopoverPlacement.h"

#include <functional>
#include <optional>

namespace orvella {

class StatusItem;

/// What a popover that hangs from the status item points at, asked anew each time.
[[nodiscard]] std::function<std::optional<PopoverAnchor>()> statusItemAnchor(const StatusItem& item);

} // namespace orvella
