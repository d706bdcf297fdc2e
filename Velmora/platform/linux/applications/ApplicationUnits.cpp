#include "platform/linux/applications/ApplicationUnits.h"

#include "platform/linux/applications/ApplicationUnitName.h"

#include <QFile>
#include <QFileInfo>
#include <QRegularExpression>

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string_view>
#include <utility>

namespace orvella {

using namespace Qt::Literals::StringLiterals;
namespace fs = std::filesystem;

namespace {

// A session has some hundred groups, a slice some dozen files; a tree beyond these bounds is read in part.
constexpr int kMostEntries = 50'000;
constexpr int kMostGroups = 2'000;
constexpr int kMostLevels = 8;
constexpr qint64 kMostBytes = 1 << 16;

/// The group of this process by cgroups(7), its parts from the root on. Nothing where it lies outside of what the
/// process may see.
QStringList ownGroup(const QString& processes)
{
    const auto path = processes + u"/self/cgroup"_s;
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return {};
    for (const auto& line : file.read(kMostBytes).split('\n')) {
        // The one hierarchy of version 2 has the number 0 and names no controllers.
        if (!line.startsWith("0::/"))
            continue;
        const auto parts = QString::fromUtf8(line.sliced(4)).split(u'/', Qt::SkipEmptyParts);
        return parts.contains(u".."_s) || parts.contains(u"."_s) ? QStringList() : parts;
    }
    return {};
}

/// The group of the user manager that this process belongs to. A session that the manager did not start, as with a
/// display manager's or one from a text console, lies beside it.
QStringList managerGroup(const QStringList& own)
{
    static const QRegularExpression manager(u"^user@[0-9]+\\.service\\z"_s);
    static const QRegularExpression user(u"^user-([0-9]+)\\.slice\\z"_s);
    const auto managerAt = own.indexOf(manager);
    if (managerAt >= 0)
        return own.first(managerAt + 1);
    const auto userAt = own.indexOf(user);
    if (userAt < 0)
        return {};
    return own.first(userAt + 1) + QStringList {u"user@%1.service"_s.arg(user.match(own[userAt]).captured(1))};
}

/// A folder itself: control groups have no links, and what else may lie there is not followed.
bool isFolder(const fs::path& path)
{
    std::error_code error;
    return fs::symlink_status(path, error).type() == fs::file_type::directory;
}

std::optional<fs::path> applicationSlice(const QString& controlGroups, const QStringList& manager)
{
    if (manager.isEmpty())
        return std::nullopt;
    fs::path folder(QFile::encodeName(controlGroups).toStdString());
    for (const auto& part : manager + QStringList {u"app.slice"_s}) {
        folder /= QFile::encodeName(part).toStdString();
        if (!isFolder(folder))
            return std::nullopt;
    }
    return folder;
}

/// Whether there is a process in the group or below it.
bool isPopulated(const fs::path& group)
{
    const auto path = group / "cgroup.events";
    std::error_code error;
    if (fs::symlink_status(path, error).type() != fs::file_type::regular)
        return false;
    std::array<char, 1024> bytes {};
    std::ifstream file(path);
    file.read(bytes.data(), std::ssize(bytes));
    const std::string_view text(bytes.data(), static_cast<std::size_t>(file.gcount()));
    return text.starts_with("populated 1\n") || text.contains("\npopulated 1\n");
}

class Reading final {
public:
    explicit Reading(const fs::path& applicationSlice) { readSlice(applicationSlice, {}, 0); }

    [[nodiscard]] std::vector<QStringList> take()
    {
        std::ranges::sort(m_units);
        return std::move(m_units);
    }

private:
    void readSlice(const fs::path& slice, const QStringList& applicationOfSlice, int level)
    {
        std::error_code error;
        for (fs::directory_iterator entry(slice, error), end; !error && entry != end && m_entries < kMostEntries;
            entry.increment(error)) {
            ++m_entries;
            // What the system has told of an entry with its name is not asked for again.
            if (entry->is_symlink(error) || !entry->is_directory(error))
                continue;
            if (++m_groups > kMostGroups)
                return;
            const auto name = QString::fromUtf8(entry->path().filename().native());
            if (!name.endsWith(u".slice"))
                readUnit(entry->path(), name, applicationOfSlice);
            else if (level < kMostLevels)
                readSlice(entry->path(), possibleApplicationIds(name), level + 1);
        }
    }

    void readUnit(const fs::path& unit, const QString& name, const QStringList& applicationOfSlice)
    {
        auto ids = possibleApplicationIds(name);
        // A service with a name of its own in an application's slice is that application, as GNOME's terminal is. The
        // scopes beside it are what it started.
        if (ids.isEmpty() && name.endsWith(u".service") && !name.startsWith(u"app-"))
            ids = applicationOfSlice;
        if (!ids.isEmpty() && isPopulated(unit))
            m_units.push_back(std::move(ids));
    }

    std::vector<QStringList> m_units;
    int m_entries = 0;
    int m_groups = 0;
};

} // namespace

ApplicationUnits::ApplicationUnits(QString processes, QString controlGroups)
    : m_processes(std::move(processes))
    , m_controlGroups(std::move(controlGroups))
{
}

std::vector<QStringList> ApplicationUnits::running() const
{
    const auto slice = applicationSlice(m_controlGroups, managerGroup(ownGroup(m_processes)));
    return slice ? Reading(*slice).take() : std::vector<QStringList>();
}

} // namespace orvella
