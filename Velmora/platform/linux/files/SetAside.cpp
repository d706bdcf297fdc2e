#include "platform/linux/files/SetAside.h"

#include "platform/linux/files/FolderSync.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Fails with EEXIST where the new name is taken.
bool renameToNew(const QByteArray& from, const QByteArray& to)
{
    if (::renameat2(AT_FDCWD, from.constData(), AT_FDCWD, to.constData(), RENAME_NOREPLACE) == 0)
        return true;
    // Not every file system can see to that by itself, NFS for example.
    if (errno != EINVAL)
        return false;
    struct stat found {};
    if (::lstat(to.constData(), &found) == 0) {
        errno = EEXIST;
        return false;
    }
    return errno == ENOENT && ::rename(from.constData(), to.constData()) == 0;
}

void keepForOwner(const QByteArray& name)
{
    struct stat found {};
    // Where it cannot be done the file is not ours, and no more open than it was.
    if (::lstat(name.constData(), &found) == 0 && S_ISREG(found.st_mode))
        static_cast<void>(::chmod(name.constData(), S_IRUSR | S_IWUSR));
}

} // namespace

bool setAside(const QString& path)
{
    constexpr int kMostTries = 1000;
    for (int number = 1; number <= kMostTries; ++number) {
        const auto name = QFile::encodeName(path + u".unreadable-%1"_s.arg(number));
        if (renameToNew(QFile::encodeName(path), name)) {
            keepForOwner(name);
            // It has moved, whatever the disk says; a file that is to take its place meets the same disk.
            std::ignore = syncFolder(QFileInfo(path).path());
            return true;
        }
        if (errno != EEXIST)
            return false;
    }
    return false;
}

} // namespace orvella
