#include "updates/PackageUpdater.h"

#include "platform/WindowSystem.h"

#include <QWindow>

#include <utility>

namespace orvella {

PackageUpdater::PackageUpdater(QDBusConnection bus, Clock& clock, WindowSystem& windows)
    : m_bus(std::move(bus))
    , m_clock(clock)
    , m_windows(windows)
{
}

PackageUpdater::~PackageUpdater()
{
    delete m_window;
}

void PackageUpdater::checkForUpdates()
{
    // A closed one goes away a moment later.
    if (m_window && m_window->isVisible())
        m_window->checkAgain();
    else
        m_window = new UpdateWindow(m_bus, m_clock);
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_windows.activate(*m_window->windowHandle());
}

} // namespace orvella
