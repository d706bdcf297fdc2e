#include "ui/LaunchWindowController.h"

#include "platform/WindowSystem.h"
#include "ui/LaunchWindow.h"
#include "ui/LaunchWindowView.h"

#include <QCoreApplication>
#include <QWindow>

namespace orvella {

LaunchWindowController::LaunchWindowController(const Look& look, AppState& state, const Platform& platform)
    : m_platform(platform)
    , m_window(std::make_unique<LaunchWindow>(look,
          new LaunchWindowView(look, state, platform.browser,
              {
                  .close = [this] { m_window->close(); },
                  // Not `quit`: that asks every window first, and an ad that is shown takes it for its dismissal.
                  .quit = [] { QCoreApplication::exit(); },
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
