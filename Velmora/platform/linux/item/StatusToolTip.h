#pragma once

#include "platform/linux/item/StatusPixmap.h"

#include <QDBusArgument>
#include <QString>

namespace orvella {

/// A tooltip as the StatusNotifierItem protocol carries it: D-Bus type (sa(iiay)ss). Ours has a title and no more.
struct StatusToolTip {
    QString iconName;
    StatusPixmaps iconPixmap;
    QString title;
    QString text;

    friend bool operator==(const StatusToolTip&, const StatusToolTip&) = default;
};

QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip);
const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip);

} // namespace orvella
