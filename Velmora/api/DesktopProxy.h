#pragma once

#include <QUrl>

#include <optional>
#include <stop_token>

namespace orvella {

class Proxies;

/// The proxy that the desktop wants for a request to this address, as `Proxies::wantedFor` has it.
///
/// Nothing, and nobody is asked, where the environment names a proxy for the scheme in a variable that libcurl reads,
/// and for this computer's own addresses.
[[nodiscard]] std::optional<QUrl> desktopProxy(const QUrl& address, const Proxies& proxies, std::stop_token stop);

} // namespace orvella
