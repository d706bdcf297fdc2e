#include "platform/linux/updater/OwnLibrary.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

namespace orvella {

QString ownLibrary(const QString& fileName)
{
    // Not QCoreApplication's answer: it falls back on the name that the program was called by, and on PATH.
    const auto executable = QFile::symLinkTarget(QStringLiteral("/proc/self/exe"));
    if (executable.isEmpty())
        return {};
    return QDir::cleanPath(
        QFileInfo(executable).path() + u'/' + QStringLiteral(ORVELLA_LIBRARY_FOLDER) + u'/' + fileName);
}

} // namespace orvella
