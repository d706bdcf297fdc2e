#include "platform/linux/environment/LastingPath.h"

#include <QFileInfo>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

QString lastingPath(const QProcessEnvironment& environment, const QString& executable)
{
    const auto image = environment.value(u"APPIMAGE"_s);
    const auto folder = QFileInfo(environment.value(u"APPDIR"_s)).canonicalFilePath();
    const bool isInside = !folder.isEmpty() && QFileInfo(executable).canonicalFilePath().startsWith(folder + u'/');
    if (!isInside || !QFileInfo(image).isAbsolute() || !QFileInfo(image).isFile())
        return executable;
    return image;
}

} // namespace orvella
