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
    say(QFileInfo::exists(m_library)
            ? QCoreApplication::translate("PluginUpdater",
                  "The part of Orvella that looks for updates does not fit this version. Look for updates in your "
                  "software centre.")
            : QCoreApplication::translate("PluginUpdater",
                  "Orvella is updated together with your system. Look for updates in your software centre."));
}

std::unique_ptr<Updater> PluginUpdater::load() const
{
    if (m_library.isEmpty())
        return nullptr;
    QPluginLoader loader(m_library);
    // This reads the file and runs nothing of it.
    if (loader.metaData().value("IID"_L1).toString() != QLatin1StringView(ORVELLA_UPDATER_IID))
        return nullptr;
    // Never unloaded: Qt's type system knows types of the library from then on.
    auto* const plugin = qobject_cast<UpdaterPlugin*>(loader.instance());
    return plugin ? plugin->makeUpdater(m_clock, m_windows) : nullptr;
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
