#include "support/PlainWindow.h"

#include <xcb/xcb.h>

#include <QRandomGenerator>

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

void setWords(xcb_connection_t* connection, xcb_window_t window, const QByteArray& property, xcb_atom_t type,
    const std::vector<uint32_t>& words)
{
    if (!words.empty())
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, window, atomOf(connection, property), type, 32,
            static_cast<uint32_t>(words.size()), words.data());
}

void setAtoms(
    xcb_connection_t* connection, xcb_window_t window, const QByteArray& property, const std::vector<QByteArray>& names)
{
    std::vector<xcb_atom_t> atoms;
    for (const auto& name : names)
        atoms.push_back(atomOf(connection, name));
    setWords(connection, window, property, XCB_ATOM_ATOM, atoms);
}

void setNumber(
    xcb_connection_t* connection, xcb_window_t window, const QByteArray& property, const std::optional<quint32>& number)
{
    if (number)
        setWords(connection, window, property, XCB_ATOM_CARDINAL, {*number});
}

/// The server gives a new connection the numbers of one that has just ended, and a window manager may take the new
/// window for the old one. So each window takes another of the connection's many numbers.
xcb_window_t unusedId(xcb_connection_t* connection)
{
    for (auto skipped = QRandomGenerator::global()->bounded(100000); skipped > 0; --skipped)
        xcb_generate_id(connection);
    return xcb_generate_id(connection);
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
    m_root = screen->root;
    m_id = unusedId(connection);
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_id, m_root, 0, 0,
        static_cast<uint16_t>(properties.size.width()), static_cast<uint16_t>(properties.size.height()), 0,
        XCB_WINDOW_CLASS_INPUT_OUTPUT, screen->root_visual, 0, nullptr);
    if (!properties.windowClass.isEmpty()) {
        const auto value = properties.instance + '\0' + properties.windowClass + '\0';
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_id, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING, 8,
            static_cast<uint32_t>(value.size()), value.constData());
    }
    setAtoms(connection, m_id, "_NET_WM_WINDOW_TYPE", properties.types);
    setAtoms(connection, m_id, "_NET_WM_STATE", properties.states);
    setNumber(connection, m_id, "_NET_WM_PID", properties.process);
    setNumber(connection, m_id, "_NET_WM_DESKTOP", properties.workspace);
    for (const auto& [name, text] : properties.texts)
        xcb_change_property(connection, XCB_PROP_MODE_REPLACE, m_id, atomOf(connection, name),
            atomOf(connection, "UTF8_STRING"), 8, static_cast<uint32_t>(text.size()), text.constData());
    xcb_map_window(connection, m_id);
    xcb_flush(connection);
}

bool PlainWindow::isShown() const
{
    auto* const connection = m_connection.get();
    // A window manager writes this onto the windows that it manages.
    const auto property = atomOf(connection, "WM_STATE");
    const auto state = xcb_get_property(connection, 0, m_id, property, property, 0, 1);
    const auto attributes = xcb_get_window_attributes(connection, m_id);
    auto* const stateReply = xcb_get_property_reply(connection, state, nullptr);
    auto* const attributesReply = xcb_get_window_attributes_reply(connection, attributes, nullptr);
    const bool isShown = stateReply != nullptr && stateReply->value_len > 0 && attributesReply != nullptr
        && attributesReply->map_state == XCB_MAP_STATE_VIEWABLE;
    std::free(stateReply);
    std::free(attributesReply);
    return isShown;
}

QRect PlainWindow::place() const
{
    auto* const connection = m_connection.get();
    const auto size = xcb_get_geometry(connection, m_id);
    const auto corner = xcb_translate_coordinates(connection, m_id, m_root, 0, 0);
    auto* const sizeReply = xcb_get_geometry_reply(connection, size, nullptr);
    auto* const cornerReply = xcb_translate_coordinates_reply(connection, corner, nullptr);
    QRect place;
    if (sizeReply != nullptr && cornerReply != nullptr)
        place = QRect(cornerReply->dst_x, cornerReply->dst_y, sizeReply->width, sizeReply->height);
    std::free(sizeReply);
    std::free(cornerReply);
    return place;
}

void PlainWindow::minimise()
{
    constexpr uint32_t kIconicState = 3;
    xcb_client_message_event_t request {};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = m_id;
    request.type = atomOf(m_connection.get(), "WM_CHANGE_STATE");
    request.data.data32[0] = kIconicState;
    xcb_send_event(m_connection.get(), 0, m_root,
        XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
        reinterpret_cast<const char*>(&request));
    xcb_flush(m_connection.get());
}

bool PlainWindow::grabPointer() const
{
    auto* const connection = m_connection.get();
    const auto cookie = xcb_grab_pointer(connection, 0, m_id, XCB_EVENT_MASK_BUTTON_PRESS, XCB_GRAB_MODE_ASYNC,
        XCB_GRAB_MODE_ASYNC, XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    auto* const reply = xcb_grab_pointer_reply(connection, cookie, nullptr);
    const bool isGrabbed = reply != nullptr && reply->status == XCB_GRAB_STATUS_SUCCESS;
    std::free(reply);
    return isGrabbed;
}

} // namespace orvella
