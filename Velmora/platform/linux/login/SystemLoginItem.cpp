#include "platform/linux/login/SystemLoginItem.h"

#include "platform/linux/environment/Flatpak.h"
#include "platform/linux/environment/LastingPath.h"
#include "platform/linux/environment/XdgDirectories.h"
#include "platform/linux/login/AutostartLoginItem.h"
#include "platform/linux/login/PortalLoginItem.h"

#include <QDir>
#include <QFileInfo>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

std::unique_ptr<LoginItem> systemLoginItem(const LoginItemSurroundings& surroundings)
{
    const auto& [environment, directories, executable, profile] = surroundings;
    const auto automatic = u"--autostart"_s;
    if (!profile && isInFlatpak(environment)) {
        return std::make_unique<PortalLoginItem>(QDBusConnection::sessionBus(),
            QStringList {QFileInfo(executable).fileName(), automatic}, directories.state() + u"/login-item"_s);
    }
    QStringList command {lastingPath(environment, executable), automatic};
    if (profile)
        command << u"--profile"_s << QDir().absoluteFilePath(*profile);
    return std::make_unique<AutostartLoginItem>(
        AutostartLoginItem::Options {directories.autostart(), command, environment});
}

} // namespace orvella
