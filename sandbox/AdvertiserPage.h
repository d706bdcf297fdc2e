#pragma once

#include "sandbox/Campaign.h"
#include "sandbox/Reply.h"

namespace orvella::sandbox {

/// The advertiser's page that a click leads to.
[[nodiscard]] Reply advertiserPage(const Campaign& campaign);

} // namespace orvella::sandbox
