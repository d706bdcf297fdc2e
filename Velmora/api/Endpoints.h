#pragma once

#include <QLatin1String>

namespace orvella::endpoints {

// The calls of the service. docs/protocol.md has a table for each.
inline constexpr QLatin1String kRegister {"/api/mac/device/register"};
inline constexpr QLatin1String kHeartbeat {"/api/mac/device/heartbeat"};
inline constexpr QLatin1String kAdsAvailable {"/api/mac/ads/available"};
inline constexpr QLatin1String kPreferences {"/api/mac/preferences"};
inline constexpr QLatin1String kSessionStart {"/api/mac/ads/session/start"};
inline constexpr QLatin1String kSessionComplete {"/api/mac/ads/session/complete"};
inline constexpr QLatin1String kClick {"/api/mac/ads/click"};
inline constexpr QLatin1String kWallet {"/api/mac/wallet"};

} // namespace orvella::endpoints
