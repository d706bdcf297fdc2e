#include "platform/linux/x11/X11Display.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>

#include <QGuiApplication>
#include <QProcessEnvironment>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

/// The number of the screen that DISPLAY names.
int screenNumber()
{
    char* host = nullptr;
    int display = 0;
    int screen = 0;
    const auto isValid = xcb_parse_display(nullptr, &host, &display, &screen) != 0;
    const X11Reply<char> freed(host);
    return isValid ? screen : 0;
}

} // namespace

std::optional<X11Display> X11Display::current()
{
    const auto* const x11 =
        qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    // Qt's platform without a display has this interface too, but no connection behind it.
    auto* const connection = x11 != nullptr ? x11->connection() : nullptr;
    if (connection == nullptr || xcb_connection_has_error(connection) != 0)
        return std::nullopt;
    auto roots = xcb_setup_roots_iterator(xcb_get_setup(connection));
    const int wanted = screenNumber();
    int screen = 0;
    for (; screen < wanted && roots.rem > 1; ++screen)
        xcb_screen_next(&roots);
    return X11Display {connection, screen, roots.data->root};
}

bool isWaylandSession(const QProcessEnvironment& environment)
{
    return environment.value(u"XDG_SESSION_TYPE"_s) == u"wayland"_s
        || !environment.value(u"WAYLAND_DISPLAY"_s).isEmpty();
}

} // namespace orvella
