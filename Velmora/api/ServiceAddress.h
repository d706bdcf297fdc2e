#pragma once

#include <QUrl>

namespace orvella::ServiceAddress {

/// The address of a path of the service: one leading "/" is dropped, the rest is a reference relative to `base`
/// (RFC 3986, section 5). So a base that ends in "/" keeps its own path, and any other loses its last segment.
/// A path that is no reference stops the program.
[[nodiscard]] QUrl resolve(const QUrl& base, const QString& path);

} // namespace orvella::ServiceAddress
