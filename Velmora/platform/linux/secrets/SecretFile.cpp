#include "platform/linux/secrets/SecretFile.h"

#include "base/Json.h"
#include "platform/linux/files/SetAside.h"
#include "platform/linux/files/Uninterrupted.h"

#include <QFile>

#include <cerrno>
#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

// Far more than tokens ever need; a larger file is not ours.
constexpr qint64 kGreatestSize = 1 << 20;

constexpr qint64 kVersion = 1;
constexpr mode_t kForOthers = S_IRWXG | S_IRWXO;

bool isOwnersAlone(int file)
{
    struct stat found {};
    return ::fstat(file, &found) == 0 && S_ISREG(found.st_mode) && found.st_uid == ::geteuid()
        && (found.st_mode & kForOthers) == 0 && found.st_size <= kGreatestSize;
}

std::optional<QString> text(const Json::Object& object, const QString& key)
{
    const auto found = object.find(key);
    const auto* const value = found == object.end() ? nullptr : found->second.string();
    return value ? std::optional(*value) : std::nullopt;
}

} // namespace

/// Keeps other changes out while one is made, those of other processes too. Makes the folder.
class SecretFile::Lock final {
public:
    explicit Lock(const SecretFile& file)
    {
        if (!file.m_file.makeFolder())
            return;
        const auto name = QFile::encodeName(file.m_folder);
        m_folder = uninterrupted([&] { return ::open(name.constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); });
        struct stat found {};
        m_isHeld = m_folder >= 0 && ::fstat(m_folder, &found) == 0 && found.st_uid == ::geteuid()
            && ((found.st_mode & kForOthers) == 0 || ::fchmod(m_folder, S_IRWXU) == 0)
            && uninterrupted([&] { return ::flock(m_folder, LOCK_EX); }) == 0;
    }

    Lock(const Lock&) = delete;
    Lock& operator=(const Lock&) = delete;

    ~Lock()
    {
        if (m_folder >= 0)
            ::close(m_folder);
    }

    [[nodiscard]] bool isHeld() const { return m_isHeld; }

private:
    int m_folder = -1;
    bool m_isHeld = false;
};

SecretFile::SecretFile(const QString& folder)
    : m_folder(folder)
    , m_path(folder + u"/secrets.json"_s)
    , m_file(m_path)
{
}

std::optional<Secret> SecretFile::read(const QString& service, const QString& account) const
{
    // It may hold a secret that has long been the keyring's alone; the file itself may never be written again.
    m_file.removeLeftOvers();
    const auto content = load();
    const auto found = content.items.find({service, account});
    return found == content.items.end() ? std::nullopt : std::optional(found->second);
}

bool SecretFile::put(const QString& service, const QString& account, const Secret& value) const
{
    const Lock lock(*this);
    if (!lock.isHeld())
        return false;
    auto content = load();
    if (content.state == State::unknown || (content.state == State::unusable && !setAside(m_path)))
        return false;
    content.items.insert_or_assign({service, account}, value);
    return save(content.items);
}

bool SecretFile::remove(const QString& service, const QString& account) const
{
    m_file.removeLeftOvers();
    // Where there is nothing to remove, not even a folder is made.
    if (load().state != State::usable)
        return false;
    const Lock lock(*this);
    auto content = load();
    if (!lock.isHeld() || content.items.erase({service, account}) == 0)
        return false;
    return save(content.items);
}

SecretFile::Content SecretFile::load() const
{
    // Neither a link is followed nor a pipe waited for.
    const auto name = QFile::encodeName(m_path);
    const auto number =
        uninterrupted([&] { return ::open(name.constData(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC); });
    if (number < 0) {
        const auto isMissing = errno == ENOENT || errno == ENOTDIR;
        const auto isUnusable = errno == ELOOP || errno == ENXIO || errno == EACCES;
        return {isMissing ? State::missing : isUnusable ? State::unusable : State::unknown, {}};
    }
    QFile file;
    if (!file.open(number, QIODevice::ReadOnly, QFileDevice::AutoCloseHandle)) {
        ::close(number);
        return {};
    }
    if (!isOwnersAlone(number))
        return {State::unusable, {}};
    const auto content = file.readAll();
    if (file.error() != QFileDevice::NoError)
        return {};
    auto items = parse(content);
    return items ? Content {State::usable, std::move(*items)} : Content {State::unusable, {}};
}

std::optional<SecretFile::Items> SecretFile::parse(const QByteArray& content)
{
    const auto value = Json::parse(content);
    const auto* const object = value ? value->object() : nullptr;
    if (!object || !object->contains(u"version"_s) || object->at(u"version"_s).integer() != kVersion)
        return std::nullopt;
    const auto list = object->find(u"items"_s);
    const auto* const entries = list == object->end() ? nullptr : list->second.array();
    if (!entries)
        return std::nullopt;
    Items items;
    for (const auto& entry : *entries) {
        const auto* const item = entry.object();
        const auto service = item ? text(*item, u"service"_s) : std::nullopt;
        const auto account = item ? text(*item, u"account"_s) : std::nullopt;
        const auto secret = item ? text(*item, u"secret"_s) : std::nullopt;
        if (!service || !account || !secret)
            return std::nullopt;
        const auto bytes = QByteArray::fromBase64Encoding(secret->toUtf8(), QByteArray::AbortOnBase64DecodingErrors);
        if (!bytes)
            return std::nullopt;
        items.insert_or_assign({*service, *account}, Secret(*bytes));
    }
    return items;
}

bool SecretFile::save(const Items& items) const
{
    Json::Array list;
    for (const auto& [key, secret] : items) {
        list.emplace_back(Json::Object {
            {u"service"_s, key.first},
            {u"account"_s, key.second},
            {u"secret"_s, QString::fromLatin1(secret.reveal().toBase64())},
        });
    }
    const auto content = Json(Json::Object {{u"version"_s, kVersion}, {u"items"_s, std::move(list)}}).serialise();
    return content && m_file.replace(*content);
}

} // namespace orvella
