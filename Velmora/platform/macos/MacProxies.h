#pragma once

#include "platform/Proxies.h"

#include <QList>

class QNetworkProxy;

namespace orvella {

/// The proxies of the system's network settings, scripts that find one included, as the toolkit reads them.
class MacProxies final : public Proxies {
public:
    /// A script is run to its end, whatever stop is requested.
    [[nodiscard]] std::optional<QUrl> wantedFor(QUrl address, std::stop_token stop) const override;

    /// The address of the first one that can be used; an empty one for none.
    [[nodiscard]] static std::optional<QUrl> firstUsable(const QList<QNetworkProxy>& proxies);
};

} // namespace orvella
