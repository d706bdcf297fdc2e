#include "ui/LaunchWindowController.h"

#include "platform/WindowSystem.h"
#include "ui/LaunchWindow.h"
#include "ui/LaunchWindowView.h"

#include <QApplication>
#include <QWindow>

namespace orvella {

LaunchWindowController::LaunchWindowController(const Look& look, AppState& state, const Platform& platform)
    : m_platform(platform)
    , m_window(std::make_unique<LaunchWindow>(look,
          new LaunchWindowView(look, state, platform.browser,
              {
                  .close = [this] { m_window->close(); },
                  .quit = [] { QApplication::quit(); },
              })))
{
    m_window->centre();
}

LaunchWindowController::~LaunchWindowController() = default;

void LaunchWindowController::show()
{
    m_window->setWindowState(m_window->windowState() & ~Qt::WindowMinimized);
    m_window->show();
    m_platform.windows.activate(*m_window->windowHandle());
}

QWidget& LaunchWindowController::window()
{
    return *m_window;
}

} // namespace orvella
