#include "platform/linux/AtomicFile.h"

#include "platform/linux/Descriptor.h"
#include "platform/linux/FolderSync.h"
#include "platform/linux/Uninterrupted.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

// As many links as the kernel itself follows.
constexpr int kMostLinks = 40;

bool writeAll(const Descriptor& file, const QByteArray& content)
{
    qsizetype done = 0;
    while (done < content.size()) {
        const auto written = uninterrupted([&] {
            return ::write(file.number(), content.constData() + done, static_cast<size_t>(content.size() - done));
        });
        if (written <= 0)
            return false;
        done += written;
    }
    return true;
}

bool makePath(const QString& folder)
{
    if (QFileInfo(folder).isDir())
        return true;
    const auto parent = QFileInfo(folder).path();
    if (parent == folder || !makePath(parent))
        return false;
    constexpr mode_t kUserOnly = 0700;
    if (::mkdir(QFile::encodeName(folder).constData(), kUserOnly) != 0)
        return errno == EEXIST && QFileInfo(folder).isDir();
    return syncFolder(parent);
}

/// Whether something is there that must not be replaced: a device, a pipe, a folder.
bool isOccupied(const QString& target)
{
    struct stat found {};
    return ::lstat(QFile::encodeName(target).constData(), &found) == 0 && !S_ISREG(found.st_mode);
}

/// Writes the content to a new file beside the target and moves it there.
bool replaceTarget(const QString& target, const QByteArray& content)
{
    QByteArray temporary;
    // mkostemp makes it readable by the user only.
    const Descriptor file(uninterrupted([&] {
        temporary = QFile::encodeName(target + u".XXXXXX"_s);
        return ::mkostemp(temporary.data(), O_CLOEXEC);
    }));
    if (!file.isOpen())
        return false;
    if (writeAll(file, content) && uninterrupted([&] { return ::fsync(file.number()); }) == 0
        && ::rename(temporary.constData(), QFile::encodeName(target).constData()) == 0)
        return true;
    const auto reason = errno;
    ::unlink(temporary.constData());
    errno = reason;
    return false;
}

std::unexpected<Failure> refusedBySystem(int reason)
{
    return failed(Failure::Kind::refused,
        QCoreApplication::translate("AtomicFile", "A file could not be written: %1.").arg(qt_error_string(reason)));
}

} // namespace

AtomicFile::AtomicFile(QString path)
    : m_path(std::move(path))
{
}

std::optional<QString> AtomicFile::target() const
{
    QFileInfo file(m_path);
    for (int link = 0; link < kMostLinks; ++link) {
        if (!file.isSymLink())
            return file.absoluteFilePath();
        file.setFile(file.symLinkTarget());
    }
    return std::nullopt;
}

bool AtomicFile::makeFolder() const
{
    const auto path = target();
    return path && makePath(QFileInfo(*path).path());
}

Result<void> AtomicFile::replace(const QByteArray& content) const
{
    const auto path = target();
    if (!path)
        return refusedBySystem(ELOOP);
    if (isOccupied(*path))
        return refusedBySystem(EEXIST);
    const auto folder = QFileInfo(*path).path();
    if (!makePath(folder) || !replaceTarget(*path, content) || !syncFolder(folder))
        return refusedBySystem(errno);
    return {};
}

} // namespace orvella
