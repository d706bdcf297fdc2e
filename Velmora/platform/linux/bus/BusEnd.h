#pragma once

#include <QDBusConnection>

namespace orvella {

/// Calls the slot when the connection to the bus is lost. The message is the D-Bus library's own and comes from no bus
/// (D-Bus API reference, DBUS_INTERFACE_LOCAL).
inline void notifyOfBusEnd(QDBusConnection& bus, QObject* receiver, const char* slot)
{
    bus.connect({}, QStringLiteral("/org/freedesktop/DBus/Local"), QStringLiteral("org.freedesktop.DBus.Local"),
        QStringLiteral("Disconnected"), receiver, slot);
}

} // namespace orvella
