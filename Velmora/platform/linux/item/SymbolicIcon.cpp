#include "platform/linux/item/SymbolicIcon.h"

#include <QFileInfo>

#include <algorithm>

namespace orvella {

QString symbolicIconName(const QStringList& iconFolders, const QString& id)
{
    const auto name = id + QStringLiteral("-symbolic");
    const auto isInstalled = std::ranges::any_of(iconFolders, [&name](const QString& folder) {
        return QFileInfo(folder + QStringLiteral("/hicolor/symbolic/apps/") + name + QStringLiteral(".svg")).isFile();
    });
    return isInstalled ? name : QString();
}

} // namespace orvella
