#pragma once

#include <QtGlobal>

#include <optional>

class QProcessEnvironment;
struct xcb_connection_t;

namespace orvella {

/// The screen of an X server that the program's windows are on, and the program's one connection to it.
struct X11Display {
    xcb_connection_t* connection = nullptr;
    int screen = 0;
    quint32 root = 0;

    /// Nothing where the program has no X11 display, or the connection is lost.
    [[nodiscard]] static std::optional<X11Display> current();
};

/// Whether the viewer's session is a Wayland one. An X server that runs in it knows only the windows of older programs,
/// so what it says of others is no answer.
[[nodiscard]] bool isWaylandSession(const QProcessEnvironment& environment);

} // namespace orvella
