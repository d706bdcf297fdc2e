#include "api/ServiceAddress.h"

namespace orvella::ServiceAddress {

QUrl resolve(const QUrl& base, const QString& path)
{
    const QUrl reference(path.startsWith(u'/') ? path.sliced(1) : path, QUrl::StrictMode);
    const auto address = base.resolved(reference);
    if ((!reference.isValid() && !reference.isEmpty()) || !address.isValid())
        qFatal("A path of the service does not form an address.");
    return address;
}

} // namespace orvella::ServiceAddress
