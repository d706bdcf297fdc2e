#include "platform/linux/files/FolderSync.h"

#include "platform/linux/files/Descriptor.h"
#include "platform/linux/files/Uninterrupted.h"

#include <QFile>

#include <fcntl.h>

namespace orvella {

bool syncFolder(const QString& folder)
{
    const auto name = QFile::encodeName(folder);
    const Descriptor opened(
        uninterrupted([&] { return ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    // Some file systems cannot sync a folder; they say EINVAL and keep its entries safe themselves.
    return opened.isOpen() && (uninterrupted([&] { return ::fsync(opened.number()); }) == 0 || errno == EINVAL);
}

} // namespace orvella
