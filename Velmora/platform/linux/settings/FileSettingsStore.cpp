#include "platform/linux/settings/FileSettingsStore.h"

#include "platform/linux/files/SetAside.h"
#include "platform/linux/files/Uninterrupted.h"
#include "platform/linux/settings/SettingsText.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvella {

namespace {

// Far more than settings ever need; a larger file is not ours.
constexpr qint64 kGreatestSize = 1 << 20;

/// What is in the file's place.
struct Found {
    enum class Kind {
        noFile,
        object,
        /// A file that has to be moved aside before another one may take its place.
        unreadable,
        /// A device, a pipe or a folder; or it could not be told what.
        untouchable,
    };

    Kind kind = Kind::untouchable;
    Json::Object members;
};

Found parse(const QByteArray& content)
{
    auto members = content.size() <= kGreatestSize ? SettingsText::parse(content) : std::nullopt;
    return members ? Found {Found::Kind::object, *std::move(members)} : Found {Found::Kind::unreadable, {}};
}

Found lookAt(const QString& path)
{
    const auto name = QFile::encodeName(path);
    struct stat found {};
    // Only a file that is clearly absent may be made anew: another one may hold the viewer's settings.
    if (::stat(name.constData(), &found) != 0)
        return {errno == ENOENT || errno == ENOTDIR ? Found::Kind::noFile : Found::Kind::untouchable, {}};
    // A device must not even be opened.
    if (!S_ISREG(found.st_mode))
        return {};
    // It may be another one by now; a pipe would block.
    const auto number = uninterrupted([&] { return ::open(name.constData(), O_RDONLY | O_NONBLOCK | O_CLOEXEC); });
    if (number < 0)
        return {errno == EACCES ? Found::Kind::unreadable : Found::Kind::untouchable, {}};
    QFile file;
    if (!file.open(number, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(number);
        return {};
    }
    if (::fstat(number, &found) != 0 || !S_ISREG(found.st_mode))
        return {};
    const auto content = file.read(kGreatestSize + 1);
    return file.error() == QFileDevice::NoError ? parse(content) : Found {Found::Kind::unreadable, {}};
}

} // namespace

FileSettingsStore::FileSettingsStore(const QString& path)
    : m_file(path)
{
    m_file.removeLeftOvers();
    if (const auto target = m_file.target())
        m_values = lookAt(*target).members;
}

std::optional<bool> FileSettingsStore::boolean(const QString& key) const
{
    const auto found = m_values.find(key);
    const auto* const value = found == m_values.end() ? nullptr : found->second.boolean();
    return value ? std::optional(*value) : std::nullopt;
}

std::optional<QString> FileSettingsStore::string(const QString& key) const
{
    const auto found = m_values.find(key);
    const auto* const value = found == m_values.end() ? nullptr : found->second.string();
    return value ? std::optional(*value) : std::nullopt;
}

void FileSettingsStore::setBoolean(const QString& key, bool value)
{
    set(key, Json(value));
}

void FileSettingsStore::setInteger(const QString& key, qint64 value)
{
    set(key, Json(value));
}

void FileSettingsStore::set(const QString& key, Json value)
{
    m_values.insert_or_assign(key, std::move(value));
    m_unwritten.insert(key);
    write();
}

void FileSettingsStore::write()
{
    const auto path = m_file.target();
    if (!path)
        return;
    auto found = lookAt(*path);
    if (found.kind == Found::Kind::untouchable || (found.kind == Found::Kind::unreadable && !setAside(*path)))
        return;
    if (found.kind == Found::Kind::object) {
        for (const auto& key : m_unwritten)
            found.members.insert_or_assign(key, m_values.at(key));
        m_values = std::move(found.members);
    }
    if (m_file.replace(SettingsText::of(m_values)))
        m_unwritten.clear();
}

} // namespace orvella
