#include "platform/linux/AutostartLoginItem.h"

#include "base/ApplicationId.h"
#include "platform/linux/AtomicFile.h"
#include "platform/linux/DesktopEntry.h"

#include <QCoreApplication>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <unistd.h>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

bool isSwitchedOff(const DesktopEntry& entry)
{
    // Each desktop has its own way of switching an entry off without removing it.
    return entry.boolean(u"Hidden"_s) == true || entry.boolean(u"X-GNOME-Autostart-enabled"_s) == false
        || entry.boolean(u"X-MATE-Autostart-enabled"_s) == false;
}

bool isProgramThere(const DesktopEntry& entry)
{
    const auto program = entry.string(u"TryExec"_s);
    return !program || (QFileInfo(*program).isFile() && QFileInfo(*program).isExecutable());
}

} // namespace

AutostartLoginItem::AutostartLoginItem(const QString& folder, QStringList command)
    : m_path(folder + u'/' + kApplicationId + u".desktop"_s)
    , m_command(std::move(command))
{
}

Result<void> AutostartLoginItem::registerItem()
{
    QStringList arguments;
    for (const auto& argument : m_command)
        arguments.append(DesktopEntry::quotedArgument(argument));
    const auto lines = QStringList {
        u"[Desktop Entry]"_s,
        u"Type=Application"_s,
        u"Version=1.5"_s,
        u"Name=Orvella"_s,
        u"Icon="_s + kApplicationId,
        // An entry that outlives the program is passed over.
        u"TryExec="_s + DesktopEntry::escaped(m_command.constFirst()),
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
    if (!entry || entry->string(u"Type"_s) != u"Application"_s || !entry->string(u"Exec"_s))
        return Status::notRegistered;
    if (isSwitchedOff(*entry))
        return Status::requiresApproval;
    return isProgramThere(*entry) ? Status::enabled : Status::notFound;
}

} // namespace orvella
