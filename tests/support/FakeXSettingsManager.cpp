#include "support/FakeXSettingsManager.h"

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

} // namespace

void FakeXSettingsManager::Disconnect::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

FakeXSettingsManager::FakeXSettingsManager(const QByteArray& settings)
    : m_connection(xcb_connect(nullptr, nullptr))
{
    auto* const connection = m_connection.get();
    if (xcb_connection_has_error(connection) != 0)
        qFatal("There is no X server.");
    m_root = xcb_setup_roots_iterator(xcb_get_setup(connection)).data->root;
    m_window = xcb_generate_id(connection);
    xcb_create_window(
        connection, 0, m_window, m_root, 0, 0, 1, 1, 0, XCB_WINDOW_CLASS_INPUT_ONLY, XCB_COPY_FROM_PARENT, 0, nullptr);
    put(settings);
    xcb_set_selection_owner(connection, m_window, atomOf(connection, "_XSETTINGS_S0"), XCB_CURRENT_TIME);
    announce();
    xcb_flush(connection);
}

void FakeXSettingsManager::put(const QByteArray& settings)
{
    const auto property = atomOf(m_connection.get(), "_XSETTINGS_SETTINGS");
    xcb_change_property(m_connection.get(), XCB_PROP_MODE_REPLACE, m_window, property, property, 8,
        static_cast<uint32_t>(settings.size()), settings.constData());
    xcb_flush(m_connection.get());
}

void FakeXSettingsManager::announce() const
{
    auto* const connection = m_connection.get();
    xcb_client_message_event_t message {};
    message.response_type = XCB_CLIENT_MESSAGE;
    message.format = 32;
    message.window = m_root;
    message.type = atomOf(connection, "MANAGER");
    message.data.data32[1] = atomOf(connection, "_XSETTINGS_S0");
    message.data.data32[2] = m_window;
    xcb_send_event(connection, 0, m_root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&message));
}

} // namespace orvella
