#include "platform/linux/AtomicFile.h"

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

/// An open file that closes itself.
class Descriptor final {
public:
    explicit Descriptor(int number)
        : m_number(number)
    {
    }

    Descriptor(const Descriptor&) = delete;
    Descriptor& operator=(const Descriptor&) = delete;

    ~Descriptor()
    {
        if (isOpen())
            ::close(m_number);
    }

    [[nodiscard]] bool isOpen() const { return m_number >= 0; }

    [[nodiscard]] bool write(const QByteArray& content) const
    {
        qsizetype done = 0;
        while (done < content.size()) {
            const auto written =
                ::write(m_number, content.constData() + done, static_cast<size_t>(content.size() - done));
            if (written < 0 && errno != EINTR)
                return false;
            if (written > 0)
                done += written;
        }
        return true;
    }

    [[nodiscard]] bool sync() const { return ::fsync(m_number) == 0; }

private:
    int m_number;
};

bool syncFolder(const QString& folder)
{
    const Descriptor opened(::open(QFile::encodeName(folder).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    // Some file systems cannot sync a folder; they say EINVAL and keep its entries safe themselves.
    return opened.isOpen() && (opened.sync() || errno == EINVAL);
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
    // mkostemp makes it readable by the user only.
    auto temporary = QFile::encodeName(target + u".XXXXXX"_s);
    const Descriptor file(::mkostemp(temporary.data(), O_CLOEXEC));
    if (!file.isOpen())
        return false;
    if (file.write(content) && file.sync()
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
