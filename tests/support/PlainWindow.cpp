#include "support/PlainWindow.h"

#include <xcb/xcb.h>

#include <cstdlib>

namespace orvella {

namespace {

xcb_atom_t atomOf(xcb_connection_t* connection, const QByteArray& name)
{
    const auto cookie = xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.constData());
    auto* const reply = xcb_intern_atom_reply(connection, cookie, nullptr);
    const auto atom = reply != nullptr ? reply->atom : xcb_atom_t {XCB_ATOM_NONE};
    std::free(reply);
    return atom;
}

void setAtoms(
    xcb_connection_t* connection, xcb_window_t window, const QByteArray& property, const std::vector<QByteArray>& names)
{
    std::vector<xcb_atom_t> atoms;
    for (const auto& name : names)
        atoms.push_back(atomOf(connection, name));
    if (!atoms.empty())
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atomOf(connection, property), XCB_ATOM_ATOM, 32,
            static_cast<uint32_t>(atoms.size()), atoms.data());
}

} // namespace

void PlainWindow::Disconnect::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

PlainWindow::PlainWindow(const Properties& properties)
    : m_connection(xcb_connect(nullptr, nullptr))
{
    auto* const connection = m_connection.get();
    if (xcb_connection_has_error(connection) != 0)
        qFatal("There is no X server.");
    const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    const auto window = xcb_generate_id(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, window, screen->root, 0, 0, 200, 100, 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    if (!properties.windowClass.isEmpty()) {
        const auto value = properties.instance + '\0' + properties.windowClass + '\0';
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
            static_cast<uint32_t>(value.size()), value.constData());
    }
    setAtoms(connection, window, "_NET_WM_WINDOW_TYPE", properties.types);
    setAtoms(connection, window, "_NET_WM_STATE", properties.states);
    xcb_map_window(connection, window);
    xcb_flush(connection);
}

} // namespace orvella
