#include "platform/linux/ProfileFolder.h"

#include <QDir>
#include <QFileInfo>

namespace orvella {

QString profileFolder(const QString& given)
{
    // What is there is resolved as the system does it, and what is not has no links yet.
    auto present = QDir::current().absoluteFilePath(given);
    QString missing;
    while (!present.isEmpty() && !QFileInfo::exists(present)) {
        const auto name = present.section(u'/', -1);
        missing.prepend(name.isEmpty() ? QString() : u'/' + name);
        present = present.section(u'/', 0, -2);
    }
    return QDir::cleanPath(QFileInfo(present + u'/').canonicalFilePath() + missing);
}

} // namespace orvella
