#include "support/FakeTray.h"

#include <xcb/xcb.h>

#include <algorithm>
#include <array>
#include <cstdlib>
#include <cstring>

namespace orvella {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <class T> using Reply = std::unique_ptr<T, Free>;

constexpr uint32_t kDock = 0;
constexpr uint32_t kEmbeddedNotify = 0;

/// Away from the corner, where windows lie that have no place yet.
constexpr QRect kStrip(300, 0, 200, 24);
constexpr int kIconSize = 24;

xcb_client_message_event_t message(quint32 window, quint32 type, const std::array<uint32_t, 5>& data)
{
    xcb_client_message_event_t event {};
    event.response_type = XCB_CLIENT_MESSAGE;
    event.format = 32;
    event.window = window;
    event.type = type;
    std::ranges::copy(data, event.data.data32);
    return event;
}

} // namespace

void FakeTray::Disconnect::operator()(xcb_connection_t* connection) const
{
    xcb_disconnect(connection);
}

FakeTray::FakeTray()
    : m_connection(xcb_connect(nullptr, nullptr))
{
    auto* const connection = m_connection.get();
    if (xcb_connection_has_error(connection) != 0)
        qFatal("There is no X server.");
    const auto* const screen = xcb_setup_roots_iterator(xcb_get_setup(connection)).data;
    m_root = screen->root;
    m_visual = screen->root_visual;
    m_requestType = atom("_NET_SYSTEM_TRAY_OPCODE");
    m_events = std::make_unique<QSocketNotifier>(xcb_get_file_descriptor(connection), QSocketNotifier::Read);
    QObject::connect(m_events.get(), &QSocketNotifier::activated, m_events.get(), [this] { readEvents(); });
}

FakeTray::~FakeTray() = default;

void FakeTray::start()
{
    auto* const connection = m_connection.get();
    m_window = xcb_generate_id(connection);
    const std::array<uint32_t, 3> values {0, 1, XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY};
    xcb_create_window(connection, XCB_COPY_FROM_PARENT, m_window, m_root, kStrip.x(), kStrip.y(),
        static_cast<uint16_t>(kStrip.width()), static_cast<uint16_t>(kStrip.height()), 0, XCB_WINDOW_CLASS_INPUT_OUTPUT,
        m_visual, XCB_CW_BACK_PIXEL | XCB_CW_OVERRIDE_REDIRECT | XCB_CW_EVENT_MASK, values.data());
    xcb_map_window(connection, m_window);
    const auto selection = atom("_NET_SYSTEM_TRAY_S0");
    xcb_set_selection_owner(connection, m_window, selection, XCB_CURRENT_TIME);
    const auto news = message(m_root, atom("MANAGER"), {XCB_CURRENT_TIME, selection, m_window, 0, 0});
    xcb_send_event(connection, 0, m_root, XCB_EVENT_MASK_STRUCTURE_NOTIFY, reinterpret_cast<const char*>(&news));
    xcb_flush(connection);
}

void FakeTray::stop()
{
    // Other programs get their windows back before it ends; the X server sees to that.
    for (const auto icon : m_icons)
        xcb_reparent_window(m_connection.get(), icon, m_root, 0, 0);
    xcb_destroy_window(m_connection.get(), m_window);
    xcb_flush(m_connection.get());
    m_window = 0;
    m_icons.clear();
}

int FakeTray::icons()
{
    // The answer comes after all events that precede it.
    const Reply<xcb_get_input_focus_reply_t> answer(
        xcb_get_input_focus_reply(m_connection.get(), xcb_get_input_focus(m_connection.get()), nullptr));
    readEvents();
    return static_cast<int>(m_icons.size());
}

std::optional<QRect> FakeTray::place()
{
    if (icons() != 1)
        return std::nullopt;
    return QRect(kStrip.topLeft(), QSize(kIconSize, kIconSize));
}

quint32 FakeTray::atom(const char* name)
{
    const auto cookie = xcb_intern_atom(m_connection.get(), 0, static_cast<uint16_t>(std::strlen(name)), name);
    const Reply<xcb_intern_atom_reply_t> reply(xcb_intern_atom_reply(m_connection.get(), cookie, nullptr));
    return reply ? reply->atom : quint32 {XCB_ATOM_NONE};
}

void FakeTray::readEvents()
{
    while (const Reply<xcb_generic_event_t> event {xcb_poll_for_event(m_connection.get())}) {
        const auto type = event->response_type & ~0x80;
        if (type == XCB_CLIENT_MESSAGE) {
            const auto* const asked = reinterpret_cast<const xcb_client_message_event_t*>(event.get());
            if (asked->type == m_requestType && asked->data.data32[1] == kDock && !m_ignoresRequests)
                take(asked->data.data32[2]);
        } else if (type == XCB_UNMAP_NOTIFY) {
            std::erase(m_icons, reinterpret_cast<const xcb_unmap_notify_event_t*>(event.get())->window);
        } else if (type == XCB_DESTROY_NOTIFY) {
            std::erase(m_icons, reinterpret_cast<const xcb_destroy_notify_event_t*>(event.get())->window);
        }
    }
}

void FakeTray::take(quint32 icon)
{
    auto* const connection = m_connection.get();
    const auto x = static_cast<int16_t>(m_icons.size() * kIconSize);
    // It may have gone since it asked.
    const Reply<xcb_generic_error_t> error(
        xcb_request_check(connection, xcb_reparent_window_checked(connection, icon, m_window, x, 0)));
    if (error)
        return;
    const std::array<uint32_t, 2> size {kIconSize, kIconSize};
    xcb_configure_window(connection, icon, XCB_CONFIG_WINDOW_WIDTH | XCB_CONFIG_WINDOW_HEIGHT, size.data());
    xcb_map_window(connection, icon);
    const auto news = message(icon, atom("_XEMBED"), {XCB_CURRENT_TIME, kEmbeddedNotify, 0, m_window, 0});
    xcb_send_event(connection, 0, icon, XCB_EVENT_MASK_NO_EVENT, reinterpret_cast<const char*>(&news));
    xcb_flush(connection);
    m_icons.push_back(icon);
}

} // namespace orvella
