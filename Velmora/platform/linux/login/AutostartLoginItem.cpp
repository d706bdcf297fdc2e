#include "platform/linux/login/AutostartLoginItem.h"

#include "base/ApplicationId.h"
#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/DesktopEntry.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>
#include <QStandardPaths>

#include <algorithm>
#include <cerrno>
#include <unistd.h>
#include <utility>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

/// Each desktop has its own way of switching an entry off without removing it. One entry serves them all, so a viewer
/// who has used any of them has switched it off.
bool isSwitchedOff(const DesktopEntry& entry)
{
    // The specification's, which XFCE, LXQt, Plasma and MATE write.
    return entry.boolean(u"Hidden"_s) == true
        // GNOME and Cinnamon.
        || entry.boolean(u"X-GNOME-Autostart-enabled"_s) == false
        // MATE before 1.26.
        || entry.boolean(u"X-MATE-Autostart-enabled"_s) == false;
}

bool isMeantFor(const DesktopEntry& entry, const QStringList& desktops)
{
    const auto only = entry.list(u"OnlyShowIn"_s);
    const auto never = entry.list(u"NotShowIn"_s);
    for (const auto& desktop : desktops) {
        if (only.contains(desktop))
            return true;
        if (never.contains(desktop))
            return false;
    }
    if (desktops.contains(u"XFCE"_s) && entry.boolean(u"X-XFCE-Autostart-Override"_s) == true)
        return true;
    return only.isEmpty();
}

} // namespace

AutostartLoginItem::AutostartLoginItem(Options options)
    : m_options(std::move(options))
    , m_path(m_options.folder + u'/' + kApplicationId + u".desktop"_s)
{
}

Result<void> AutostartLoginItem::registerItem()
{
    QStringList arguments;
    for (const auto& argument : m_options.command)
        arguments.append(DesktopEntry::quotedArgument(argument));
    // No "Version": MATE's session takes no entry that names another than 1.0.
    const auto lines = QStringList {
        u"[Desktop Entry]"_s,
        u"Type=Application"_s,
        u"Name=Orvella"_s,
        u"Icon="_s + kApplicationId,
        // An entry that outlives the program is passed over.
        u"TryExec="_s + DesktopEntry::escaped(m_options.command.constFirst()),
        u"Exec="_s + DesktopEntry::escaped(arguments.join(u' ')),
        u"Terminal=false"_s,
    };
    return AtomicFile(m_path).replace((lines.join(u'\n') + u'\n').toUtf8());
}

Result<void> AutostartLoginItem::unregisterItem()
{
    if (::unlink(QFile::encodeName(m_path).constData()) == 0 || errno == ENOENT || errno == ENOTDIR)
        return {};
    return failed(Failure::Kind::refused,
        QCoreApplication::translate("AutostartLoginItem", "The entry for starting at login could not be removed: %1.")
            .arg(qt_error_string(errno)));
}

LoginItem::Status AutostartLoginItem::status() const
{
    const auto entry = DesktopEntry::read(m_path);
    if (!entry || entry->string(u"Type"_s) != u"Application"_s)
        return Status::notRegistered;
    const auto command = entry->command();
    if (!isOwn(command))
        return Status::notRegistered;
    const auto desktops = m_options.environment.value(u"XDG_CURRENT_DESKTOP"_s).split(u':', Qt::SkipEmptyParts);
    if (isSwitchedOff(*entry) || !isMeantFor(*entry, desktops))
        return Status::requiresApproval;
    const auto isComplete =
        isThere(command.constFirst()) && isThere(entry->string(u"TryExec"_s).value_or(command.constFirst()));
    return isComplete ? Status::enabled : Status::notFound;
}

bool AutostartLoginItem::isOwn(const QStringList& command) const
{
    // The viewer may have put something before it, and it may be another build, or one in a sandbox.
    return std::ranges::any_of(command, [this](const QString& word) {
        return word == m_options.command.constFirst() || word.contains(kApplicationId)
            || QFileInfo(word).fileName().startsWith(u"orvella"_s, Qt::CaseInsensitive);
    });
}

bool AutostartLoginItem::isThere(const QString& program) const
{
    const auto folders = m_options.environment.value(u"PATH"_s).split(u':', Qt::SkipEmptyParts);
    return !QStandardPaths::findExecutable(program, folders).isEmpty();
}

} // namespace orvella
