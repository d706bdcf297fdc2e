#include "platform/linux/updater/PluginUpdater.h"

#include "platform/WindowSystem.h"
#include "platform/linux/environment/Flatpak.h"
#include "platform/linux/environment/LastingPath.h"
#include "platform/linux/updater/UpdaterPlugin.h"

#include <QCoreApplication>
#include <QFileInfo>
#include <QPluginLoader>
#include <QWindow>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

/// What the file says of itself; nothing of it is run.
QString interfaceOf(const QString& library)
{
    return QPluginLoader(library).metaData().value("IID"_L1).toString();
}

} // namespace

PluginUpdater::PluginUpdater(Surroundings surroundings, Clock& clock, WindowSystem& windows)
    : m_surroundings(std::move(surroundings))
    , m_clock(clock)
    , m_windows(windows)
{
    // Anything but an absolute path would be searched for.
    if (!QFileInfo(m_surroundings.library).isAbsolute())
        m_surroundings.library.clear();
}

PluginUpdater::~PluginUpdater()
{
    delete m_notice;
}

void PluginUpdater::checkForUpdates()
{
    if (!m_updater)
        m_updater = load();
    if (m_updater) {
        delete m_notice;
        m_updater->checkForUpdates();
        return;
    }
    say(reason());
}

std::unique_ptr<Updater> PluginUpdater::load() const
{
    const auto& library = m_surroundings.library;
    if (library.isEmpty() || interfaceOf(library) != QLatin1StringView(ORVELLA_UPDATER_IID))
        return nullptr;
    // Never unloaded: Qt's type system knows types of the library from then on.
    auto* const plugin = qobject_cast<UpdaterPlugin*>(QPluginLoader(library).instance());
    return plugin ? plugin->makeUpdater(m_clock, m_windows) : nullptr;
}

/// Why there is no updater.
QString PluginUpdater::reason() const
{
    if (!QFileInfo::exists(m_surroundings.library))
        return origin();
    // An upgrade puts the library of the new version beside the program of the old one, which runs on.
    const auto interface = interfaceOf(m_surroundings.library);
    if (interface.startsWith(QLatin1StringView(ORVELLA_UPDATER_INTERFACE))
        && interface != QLatin1StringView(ORVELLA_UPDATER_IID))
        return QCoreApplication::translate("PluginUpdater",
            "Orvella was updated while it was running. Quit it and start it again before you look for updates.");
    return QCoreApplication::translate("PluginUpdater",
        "The part of Orvella that looks for updates does not fit this version. Look for updates in your software "
        "centre.");
}

/// Where updates come from, where nobody looks for them.
QString PluginUpdater::origin() const
{
    const auto& [library, environment, executable] = m_surroundings;
    if (isInFlatpak(environment))
        return QCoreApplication::translate("PluginUpdater",
            "This Orvella is a Flatpak, and Flatpak brings its updates. Look for them in your software centre.");
    if (lastingPath(environment, executable) != executable)
        return QCoreApplication::translate("PluginUpdater",
            "This Orvella is an AppImage, which is a single file. A newer version is a newer file: get it where you "
            "got this one.");
    // Packages of the system are not to be told from what somebody has built.
    return QCoreApplication::translate("PluginUpdater",
        "If Orvella came with the packages of your system, it is updated together with them: look for updates in your "
        "software centre. Otherwise get a newer version where you got this one.");
}

void PluginUpdater::say(const QString& text)
{
    if (!m_notice) {
        m_notice = new QMessageBox(QMessageBox::Information, u"Orvella"_s, text, QMessageBox::Ok);
        m_notice->setObjectName(u"updateNotice"_s);
        m_notice->setAttribute(Qt::WA_DeleteOnClose);
        m_notice->setModal(false);
    }
    m_notice->setText(text);
    m_notice->show();
    m_windows.activate(*m_notice->windowHandle());
}

} // namespace orvella
