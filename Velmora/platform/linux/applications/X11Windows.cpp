#include "platform/linux/applications/X11Windows.h"

#include "platform/linux/x11/X11Atom.h"
#include "platform/linux/x11/X11Hints.h"
#include "platform/linux/x11/X11Property.h"

#include <QByteArrayList>

#include <algorithm>

namespace orvella {

namespace {

/// The questions about one window that are under way.
struct Questions {
    xcb_window_t window;
    X11Property windowClass;
    X11Property gtkApplication;
    X11Property kdeApplication;
    X11Property type;
    X11Property state;
};

bool isRegular(const X11Hints& hints, const std::vector<xcb_atom_t>& types, const std::vector<xcb_atom_t>& states)
{
    const auto has = [](const std::vector<xcb_atom_t>& list, xcb_atom_t atom) {
        return std::ranges::find(list, atom) != list.end();
    };
    const auto isWindow =
        types.empty() || has(types, hints->_NET_WM_WINDOW_TYPE_NORMAL) || has(types, hints->_NET_WM_WINDOW_TYPE_DIALOG);
    return isWindow && !has(states, hints->_NET_WM_STATE_SKIP_TASKBAR);
}

} // namespace

std::vector<X11Windows::Window> X11Windows::list(const X11Display& display)
{
    const X11Hints hints(display.connection);
    if (!hints.isValid())
        return {};
    const auto ask = [&display](xcb_window_t window, xcb_atom_t property, xcb_atom_t type) {
        return X11Property(display.connection, {window, property, type});
    };
    const auto applications = x11Atoms(display.connection, {"_GTK_APPLICATION_ID", "_KDE_NET_WM_DESKTOP_FILE"});
    X11Property clients(
        display.connection, {display.root, hints->_NET_CLIENT_LIST, XCB_ATOM_WINDOW, X11Property::kMostWindows});
    std::vector<Questions> questions;
    for (const auto window : clients.words().value_or(std::vector<uint32_t>()))
        questions.push_back({window, ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING),
            ask(window, applications[0], hints->UTF8_STRING), ask(window, applications[1], hints->UTF8_STRING),
            ask(window, hints->_NET_WM_WINDOW_TYPE, XCB_ATOM_ATOM), ask(window, hints->_NET_WM_STATE, XCB_ATOM_ATOM)});

    std::vector<Window> windows;
    for (auto& asked : questions) {
        auto& window = windows.emplace_back();
        window.id = asked.window;
        // Two texts, each ended by a zero byte.
        const auto parts = asked.windowClass.bytes().value_or(QByteArray()).split('\0');
        window.instance = QString::fromUtf8(parts.value(0));
        window.windowClass = QString::fromUtf8(parts.value(1));
        window.applicationId = QString::fromUtf8(asked.gtkApplication.bytes().value_or(QByteArray()));
        const auto kde = asked.kdeApplication.bytes();
        if (window.applicationId.isEmpty() && kde)
            window.applicationId = QString::fromUtf8(*kde);
        window.isRegular = isRegular(hints, asked.type.words().value_or(std::vector<xcb_atom_t>()),
            asked.state.words().value_or(std::vector<xcb_atom_t>()));
    }
    return windows;
}

} // namespace orvella
