#include "platform/linux/X11Windows.h"

#include <xcb/xcb_ewmh.h>

#include <QByteArrayList>

#include <algorithm>
#include <cstdlib>
#include <memory>

namespace orvella {

namespace {

struct Free {
    void operator()(void* reply) const { std::free(reply); }
};

template <class T> using Reply = std::unique_ptr<T, Free>;

// As much of a property as is read, in units of four bytes.
constexpr uint32_t kMostUnits = 1024;

/// The atoms of the Extended Window Manager Hints on one connection.
class Hints final {
public:
    explicit Hints(xcb_connection_t* connection)
        : m_isValid(xcb_ewmh_init_atoms_replies(&m_hints, xcb_ewmh_init_atoms(connection, &m_hints), nullptr) != 0)
    {
    }

    Hints(const Hints&) = delete;
    Hints& operator=(const Hints&) = delete;

    ~Hints()
    {
        if (m_isValid)
            xcb_ewmh_connection_wipe(&m_hints);
    }

    [[nodiscard]] bool isValid() const { return m_isValid; }

    [[nodiscard]] xcb_ewmh_connection_t& operator*() { return m_hints; }

private:
    xcb_ewmh_connection_t m_hints {};
    bool m_isValid;
};

std::vector<xcb_window_t> clientList(xcb_ewmh_connection_t& hints)
{
    std::vector<xcb_window_t> windows;
    for (int screen = 0; screen < hints.nb_screens; ++screen) {
        xcb_ewmh_get_windows_reply_t reply {};
        if (xcb_ewmh_get_client_list_reply(&hints, xcb_ewmh_get_client_list(&hints, screen), &reply, nullptr) == 0)
            continue;
        windows.insert(windows.end(), reply.windows, reply.windows + reply.windows_len);
        xcb_ewmh_get_windows_reply_wipe(&reply);
    }
    return windows;
}

/// The questions about one window that are under way.
struct Questions {
    xcb_window_t window;
    xcb_get_property_cookie_t windowClass;
    xcb_get_property_cookie_t type;
    xcb_get_property_cookie_t state;
};

std::vector<xcb_atom_t> atoms(xcb_connection_t* connection, xcb_get_property_cookie_t cookie)
{
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 32)
        return {};
    const auto* const first = static_cast<const xcb_atom_t*>(xcb_get_property_value(reply.get()));
    return {first, first + reply->value_len};
}

bool isRegular(
    const xcb_ewmh_connection_t& hints, const std::vector<xcb_atom_t>& types, const std::vector<xcb_atom_t>& states)
{
    const auto has = [](const std::vector<xcb_atom_t>& list, xcb_atom_t atom) {
        return std::ranges::find(list, atom) != list.end();
    };
    const auto isWindow =
        types.empty() || has(types, hints._NET_WM_WINDOW_TYPE_NORMAL) || has(types, hints._NET_WM_WINDOW_TYPE_DIALOG);
    return isWindow && !has(states, hints._NET_WM_STATE_SKIP_TASKBAR);
}

/// The two texts of WM_CLASS, each ended by a zero byte.
void readClass(xcb_connection_t* connection, xcb_get_property_cookie_t cookie, X11Windows::Window& window)
{
    const Reply<xcb_get_property_reply_t> reply(xcb_get_property_reply(connection, cookie, nullptr));
    if (!reply || reply->format != 8)
        return;
    const QByteArray value(
        static_cast<const char*>(xcb_get_property_value(reply.get())), xcb_get_property_value_length(reply.get()));
    const auto parts = value.split('\0');
    window.instance = QString::fromUtf8(parts.value(0));
    window.windowClass = QString::fromUtf8(parts.value(1));
}

} // namespace

std::vector<X11Windows::Window> X11Windows::list(xcb_connection_t* connection)
{
    if (xcb_connection_has_error(connection) != 0)
        return {};
    Hints hints(connection);
    if (!hints.isValid())
        return {};
    const auto ask = [connection](xcb_window_t window, xcb_atom_t property, xcb_atom_t type) {
        return xcb_get_property(connection, 0, window, property, type, 0, kMostUnits);
    };
    // All questions go out before the first answer is read: on a display that is far away each wait counts.
    std::vector<Questions> questions;
    for (const auto window : clientList(*hints))
        questions.push_back({window, ask(window, XCB_ATOM_WM_CLASS, XCB_ATOM_STRING),
            ask(window, (*hints)._NET_WM_WINDOW_TYPE, XCB_ATOM_ATOM),
            ask(window, (*hints)._NET_WM_STATE, XCB_ATOM_ATOM)});

    std::vector<Window> windows;
    for (const auto& asked : questions) {
        auto& window = windows.emplace_back();
        window.id = asked.window;
        readClass(connection, asked.windowClass, window);
        const auto types = atoms(connection, asked.type);
        window.isRegular = isRegular(*hints, types, atoms(connection, asked.state));
    }
    return windows;
}

} // namespace orvella
