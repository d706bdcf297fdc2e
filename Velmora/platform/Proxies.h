#pragma once

#include <QUrl>

#include <optional>
#include <stop_token>

namespace orvella {

/// The proxies that the viewer has set in the desktop.
class Proxies {
public:
    virtual ~Proxies() = default;

    /// What the desktop wants for this address now: a proxy as http, https, socks4, socks4a, socks5 or socks5h address
    /// with its port, which may hold a user name and a password; an empty address for none; nothing where the desktop
    /// does not say.
    ///
    /// To be called in worker threads, of which several may ask at once: it waits for the desktop, though not beyond a
    /// stop, and turns the events of its thread meanwhile.
    [[nodiscard]] virtual std::optional<QUrl> wantedFor(QUrl address, std::stop_token stop) const = 0;
};

} // namespace orvella
