#include "platform/linux/files/AtomicFile.h"

#include "platform/linux/files/Descriptor.h"
#include "platform/linux/files/FolderSync.h"
#include "platform/linux/files/Uninterrupted.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

// As many links as the kernel itself follows.
constexpr int kMostLinks = 40;

// Long enough not to be taken for what a viewer keeps beside the file, "settings.json.backup" for example.
constexpr QLatin1String kUnfinished {".unfinished-"};
constexpr QLatin1String kRandom {"XXXXXX"};
constexpr int kMostTries = 10;

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

/// Locks a new file. False where somebody has taken it for a left-over in between.
bool isLocked(int file)
{
    // It is not waited for: who has it may have been stopped. Where nothing can be locked, nothing is removed either.
    if (uninterrupted([&] { return ::flock(file, LOCK_EX | LOCK_NB); }) != 0)
        return errno != EWOULDBLOCK;
    struct stat found {};
    return ::fstat(file, &found) != 0 || found.st_nlink > 0;
}

/// Opens a new file beside the target and gives its name. It is locked for as long as it is open, so that nobody takes
/// it for a left-over. -1, with `errno`, where that is not possible.
int openTemporary(const QString& target, QByteArray& name)
{
    for (int tries = 1;; ++tries) {
        // mkostemp makes it readable by the user only.
        const auto file = uninterrupted([&] {
            name = QFile::encodeName(target + kUnfinished + kRandom);
            return ::mkostemp(name.data(), O_CLOEXEC);
        });
        if (file < 0 || isLocked(file) || tries == kMostTries)
            return file;
        ::unlink(name.constData());
        ::close(file);
    }
}

/// Removes the file unless a process is writing it.
void removeLeftOver(const QString& path)
{
    const auto name = QFile::encodeName(path);
    // A network may ask for a file that is open for writing before it locks it.
    const Descriptor file(
        uninterrupted([&] { return ::open(name.constData(), O_RDWR | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); }));
    struct stat found {};
    if (file.isOpen() && ::fstat(file.number(), &found) == 0 && S_ISREG(found.st_mode) && found.st_uid == ::geteuid()
        && uninterrupted([&] { return ::flock(file.number(), LOCK_EX | LOCK_NB); }) == 0)
        ::unlink(name.constData());
}

void removeLeftOversOf(const QString& target)
{
    const QFileInfo file(target);
    const auto beginning = file.fileName() + kUnfinished;
    const auto entries = file.dir().entryList(QDir::Files | QDir::Hidden);
    for (const auto& entry : entries) {
        if (entry.startsWith(beginning) && entry.size() == beginning.size() + kRandom.size())
            removeLeftOver(file.dir().filePath(entry));
    }
}

/// Writes the content to a new file beside the target and moves it there.
bool replaceTarget(const QString& target, const QByteArray& content)
{
    QByteArray temporary;
    const Descriptor file(openTemporary(target, temporary));
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

void AtomicFile::removeLeftOvers() const
{
    if (const auto path = target())
        removeLeftOversOf(*path);
}

Result<void> AtomicFile::replace(const QByteArray& content) const
{
    const auto path = target();
    if (!path)
        return refusedBySystem(ELOOP);
    if (isOccupied(*path))
        return refusedBySystem(EEXIST);
    const auto folder = QFileInfo(*path).path();
    removeLeftOversOf(*path);
    if (!makePath(folder) || !replaceTarget(*path, content) || !syncFolder(folder))
        return refusedBySystem(errno);
    return {};
}

} // namespace orvella
