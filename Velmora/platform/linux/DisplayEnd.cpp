#include "platform/linux/DisplayEnd.h"

#include <xcb/xcb.h>

#include <QGuiApplication>

#include <cstdlib>
#include <unistd.h>

namespace orvella {

namespace {

/// Qt calls `exit` from within the main loop, so the application object is still there; at any other end it is not.
bool isDisplayLost()
{
    const auto* const x11 =
        qGuiApp != nullptr ? qGuiApp->nativeInterface<QNativeInterface::QX11Application>() : nullptr;
    auto* const connection = x11 != nullptr ? x11->connection() : nullptr;
    return connection != nullptr && xcb_connection_has_error(connection) != 0;
}

extern "C" void leaveWithDisplay()
{
    if (isDisplayLost())
        _exit(0);
}

} // namespace

void endInOrderWithDisplay()
{
    std::atexit(leaveWithDisplay);
}

} // namespace orvella
