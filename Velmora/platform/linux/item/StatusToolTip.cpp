#include "platform/linux/item/StatusToolTip.h"

namespace orvella {

QDBusArgument& operator<<(QDBusArgument& argument, const StatusToolTip& toolTip)
{
    argument.beginStructure();
    argument << toolTip.iconName << toolTip.iconPixmap << toolTip.title << toolTip.text;
    argument.endStructure();
    return argument;
}

const QDBusArgument& operator>>(const QDBusArgument& argument, StatusToolTip& toolTip)
{
    argument.beginStructure();
    argument >> toolTip.iconName >> toolTip.iconPixmap >> toolTip.title >> toolTip.text;
    argument.endStructure();
    return argument;
}

} // namespace orvella
