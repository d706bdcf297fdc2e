#include "platform/linux/DBusApplicationAdaptor.h"

#include <utility>

namespace orvella {

DBusApplicationAdaptor::DBusApplicationAdaptor(QObject* parent, std::function<void(const QVariantMap&)> activated)
    : QDBusAbstractAdaptor(parent)
    , m_activated(std::move(activated))
{
}

void DBusApplicationAdaptor::Activate(const QVariantMap& platform_data)
{
    m_activated(platform_data);
}

void DBusApplicationAdaptor::Open(const QStringList&, const QVariantMap& platform_data)
{
    m_activated(platform_data);
}

void DBusApplicationAdaptor::ActivateAction(const QString&, const QVariantList&, const QVariantMap&) {}

} // namespace orvella
