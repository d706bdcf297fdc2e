#include "platform/linux/PluginUpdater.h"

#include "platform/WindowSystem.h"
#include "platform/linux/UpdaterPlugin.h"

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

PluginUpdater::PluginUpdater(QString library, Clock& clock, WindowSystem& windows)
    // Anything but an absolute path would be searched for.
    : m_library(QFileInfo(library).isAbsolute() ? std::move(library) : QString())
    , m_clock(clock)
    , m_windows(windows)
{
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
    if (m_library.isEmpty() || interfaceOf(m_library) != QLatin1StringView(ORVELLA_UPDATER_IID))
        return nullptr;
    // Never unloaded: Qt's type system knows types of the library from then on.
    auto* const plugin = qobject_cast<UpdaterPlugin*>(QPluginLoader(m_library).instance());
    return plugin ? plugin->makeUpdater(m_clock, m_windows) : nullptr;
}

/// Why there is no updater.
QString PluginUpdater::reason() const
{
    if (!QFileInfo::exists(m_library))
        return QCoreApplication::translate(
            "PluginUpdater", "Orvella is updated together with your system. Look for updates in your software centre.");
    // An upgrade puts the library of the new version beside the program of the old one, which runs on.
    const auto interface = interfaceOf(m_library);
    if (interface.startsWith(QLatin1StringView(ORVELLA_UPDATER_INTERFACE))
        && interface != QLatin1StringView(ORVELLA_UPDATER_IID))
        return QCoreApplication::translate("PluginUpdater",
            "Orvella was updated while it was running. Quit it and start it again before you look for updates.");
    return QCoreApplication::translate("PluginUpdater",
        "The part of Orvella that looks for updates does not fit this version. Look for updates in your software "
        "centre.");
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
