#include "api/ServiceAddress.h"

namespace orvella {

QUrl ServiceAddress::resolve(const QUrl& base, const QString& path)
{
    const auto text = path.startsWith(u'/') ? path.sliced(1) : path;
    const QUrl reference(text, QUrl::StrictMode);
    auto address = base.resolved(reference);
    // The empty reference is the base itself, although QUrl calls it invalid.
    if ((!reference.isValid() && !text.isEmpty()) || !address.isValid() || address.isRelative())
        qFatal("A request path cannot be resolved against the service's address.");
    return address;
}

QUrl ServiceAddress::viewerPage(const QUrl& base)
{
    return base.resolved(QUrl(QStringLiteral("/viewer"), QUrl::StrictMode));
}

} // namespace orvella
