#pragma once

#include "api/Records.h"

namespace orvella {

// Records as the service sends them, for tests that change what matters to them.

[[nodiscard]] DeviceRegistration aRegistration();
[[nodiscard]] WalletResponse aWallet();
[[nodiscard]] AvailableAd anAd();
/// The offer of `anAd`.
[[nodiscard]] AvailabilityResponse anOffer();
/// No ad, no new pause.
[[nodiscard]] AvailabilityResponse noOffer();
[[nodiscard]] AdSession aSession();
[[nodiscard]] CompletionResponse aCompletion();
[[nodiscard]] ClickResponse aClick();

} // namespace orvella
