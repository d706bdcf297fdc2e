#include "platform/linux/windows/SessionWindowSystem.h"

#include "platform/linux/windows/QtWindowSystem.h"
#include "platform/linux/windows/X11WindowSystem.h"

#include <QGuiApplication>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

std::unique_ptr<WindowSystem> sessionWindowSystem(std::function<QString()> takeToken)
{
    if (QGuiApplication::platformName() == u"xcb"_s) {
        if (const auto display = X11Display::current())
            return std::make_unique<X11WindowSystem>(*display);
    }
    const bool isWayland = QGuiApplication::platformName().startsWith(u"wayland"_s);
    return std::make_unique<QtWindowSystem>(
        isWayland ? QtWindowSystem::Kind::wayland : QtWindowSystem::Kind::offscreen, std::move(takeToken));
}

} // namespace orvella
