#pragma once

#include <QString>
#include <QUrl>

namespace orvella {

/// Where the service's calls go.
class ServiceAddress final {
public:
    ServiceAddress() = delete;

    /// The address of a call: the path without exactly one leading "/", resolved against the service's base address by
    /// RFC 3986, section 5.2. So a base path that ends in "/" stays in front, one that does not loses its last segment,
    /// and a path with two leading "/" starts at the base's root. A path that is no reference stops the program.
    [[nodiscard]] static QUrl resolve(const QUrl& base, const QString& path);

    /// The viewer's own page on the service's web site: "/viewer" on the base address's host.
    [[nodiscard]] static QUrl viewerPage(const QUrl& base);
};

} // namespace orvella
