#pragma once

#include "platform/Proxies.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <chrono>

namespace orvella {

/// The proxies of the desktop's settings, asked of its portal on the session bus
/// (`org.freedesktop.portal.ProxyResolver`, version 1). It learns no more of an address than scheme, host and port.
///
/// A portal that does not run is not started. One that answers with an error or too late says nothing.
class PortalProxies final : public Proxies {
public:
    explicit PortalProxies(QDBusConnection bus, std::chrono::milliseconds patience = std::chrono::seconds(1));

    [[nodiscard]] std::optional<QUrl> wantedFor(QUrl address, std::stop_token stop) const override;

    /// The same for any thread: it turns no events, and nothing but the patience ends the wait.
    [[nodiscard]] std::optional<QUrl> wantedFor(const QUrl& address) const;

private:
    QDBusConnection m_bus;
    std::chrono::milliseconds m_patience;
};

} // namespace orvella
