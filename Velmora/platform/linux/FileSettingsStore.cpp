#include "platform/linux/FileSettingsStore.h"

#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <sys/stat.h>
#include <tuple>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

// Far more than settings ever need; a larger file is not ours.
constexpr qint64 kGreatestSize = 1 << 20;

std::optional<Json::Object> readObject(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly) || file.size() > kGreatestSize)
        return std::nullopt;
    const auto content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return std::nullopt;
    const auto value = Json::parse(content);
    const auto* const members = value ? value->object() : nullptr;
    return members ? std::optional(*members) : std::nullopt;
}

bool setAside(const QString& path)
{
    constexpr int kMostTries = 1000;
    for (int number = 1; number <= kMostTries; ++number) {
        const auto name = path + u".unreadable-%1"_s.arg(number);
        if (QFileInfo(name).exists() || QFileInfo(name).isSymLink())
            continue;
        return QFile::rename(path, name);
    }
    return false;
}

} // namespace

FileSettingsStore::FileSettingsStore(const QString& path)
    : m_file(path)
{
    load();
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
    m_values.insert_or_assign(key, Json(value));
    write();
}

void FileSettingsStore::setInteger(const QString& key, qint64 value)
{
    m_values.insert_or_assign(key, Json(value));
    write();
}

void FileSettingsStore::load()
{
    const auto path = m_file.target();
    if (!path)
        return;
    struct stat found {};
    if (::stat(QFile::encodeName(*path).constData(), &found) != 0) {
        // Only a file that is clearly absent may be made anew: another one may hold the viewer's settings.
        if (errno == ENOENT || errno == ENOTDIR)
            m_state = State::writable;
        return;
    }
    // A device must not be moved, and a pipe would block.
    if (!S_ISREG(found.st_mode))
        return;
    if (auto members = readObject(*path)) {
        m_values = std::move(*members);
        m_state = State::writable;
        return;
    }
    m_state = State::unreadable;
}

void FileSettingsStore::write()
{
    if (m_state == State::unreadable) {
        const auto path = m_file.target();
        m_state = path && setAside(*path) ? State::writable : State::untouchable;
    }
    if (m_state != State::writable)
        return;
    // One line for each setting, for the people who look into the file.
    QByteArrayList lines;
    for (const auto& [key, value] : m_values) {
        const auto name = Json(key).serialise();
        const auto text = value.serialise();
        if (name && text)
            lines.append("  " + *name + ": " + *text);
    }
    // The memory keeps a value that could not be written, and the next change writes it too.
    std::ignore = m_file.replace("{\n" + lines.join(",\n") + "\n}\n");
}

} // namespace orvella
