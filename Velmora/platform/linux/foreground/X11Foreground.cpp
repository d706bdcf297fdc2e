#include "platform/linux/foreground/X11Foreground.h"

#include "platform/linux/x11/X11Hints.h"
#include "platform/linux/x11/X11Property.h"
#include "platform/linux/x11/X11Reply.h"

#include <xcb/randr.h>

#include <algorithm>
#include <array>
#include <limits>
#include <ranges>
#include <utility>

namespace orvella {

namespace {

using Words = std::vector<uint32_t>;

X11Property ask(const X11Display& display, xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
    uint32_t mostUnits = X11Property::kMostUnits)
{
    return X11Property(display.connection, {window, property, type, mostUnits});
}

qint64 ownerOf(xcb_window_t window, std::optional<uint32_t> process)
{
    constexpr auto kMost = static_cast<uint32_t>(std::numeric_limits<int32_t>::max());
    if (process && *process > 0 && *process <= kMost)
        return *process;
    return -qint64 {window};
}

/// Whether there is a window manager. What one that is gone has left on the root window is no fact.
class Manager final {
public:
    Manager(const X11Display& display, const X11Hints& hints)
        : m_display(display)
        , m_hints(hints)
        , m_named(ask(display, display.root, hints->_NET_SUPPORTING_WM_CHECK, XCB_ATOM_WINDOW))
    {
    }

    /// Reads what the root window names and asks the window itself.
    void follow()
    {
        m_window = m_named.word();
        if (m_window)
            m_confirmation.emplace(ask(m_display, *m_window, m_hints->_NET_SUPPORTING_WM_CHECK, XCB_ATOM_WINDOW));
    }

    [[nodiscard]] bool isThere() { return m_confirmation && m_confirmation->word() == m_window; }

private:
    const X11Display& m_display;
    const X11Hints& m_hints;
    X11Property m_named;
    std::optional<xcb_window_t> m_window;
    std::optional<X11Property> m_confirmation;
};

/// The questions about one window that are under way.
class WindowQuestions final {
public:
    WindowQuestions(const X11Display& display, const X11Hints& hints, xcb_window_t window)
        : m_display(display)
        , m_hints(hints)
        , m_window(window)
        , m_process(ask(display, window, hints->_NET_WM_PID, XCB_ATOM_CARDINAL))
        , m_workspace(ask(display, window, hints->_NET_WM_DESKTOP, XCB_ATOM_CARDINAL))
        , m_types(ask(display, window, hints->_NET_WM_WINDOW_TYPE, XCB_ATOM_ATOM))
        , m_states(ask(display, window, hints->_NET_WM_STATE, XCB_ATOM_ATOM))
        , m_size(xcb_get_geometry(display.connection, window))
    {
    }

    /// The window, if it is on a screen while this workspace is shown.
    [[nodiscard]] std::optional<ScreenWindow> answer(std::optional<uint32_t> currentWorkspace)
    {
        const X11Reply<xcb_get_geometry_reply_t> size(xcb_get_geometry_reply(m_display.connection, m_size, nullptr));
        const auto workspace = m_workspace.word();
        const auto states = m_states.words().value_or(Words());
        const auto type = firstKnownType();
        const bool isElsewhere =
            workspace && currentWorkspace && *workspace != *currentWorkspace && *workspace != X11Hints::kAllWorkspaces;
        const bool isHidden = std::ranges::find(states, m_hints->_NET_WM_STATE_HIDDEN) != states.end();
        if (!size || isElsewhere || isHidden || type == m_hints->_NET_WM_WINDOW_TYPE_DESKTOP)
            return std::nullopt;
        return ScreenWindow {ownerOf(m_window, m_process.word()), layerOf(type), QSizeF(size->width, size->height)};
    }

private:
    /// A window lists its types with the most telling one first, and may begin with a desktop's own.
    [[nodiscard]] xcb_atom_t firstKnownType()
    {
        const std::array known {m_hints->_NET_WM_WINDOW_TYPE_NORMAL, m_hints->_NET_WM_WINDOW_TYPE_DIALOG,
            m_hints->_NET_WM_WINDOW_TYPE_UTILITY, m_hints->_NET_WM_WINDOW_TYPE_DESKTOP,
            m_hints->_NET_WM_WINDOW_TYPE_DOCK, m_hints->_NET_WM_WINDOW_TYPE_TOOLBAR, m_hints->_NET_WM_WINDOW_TYPE_MENU,
            m_hints->_NET_WM_WINDOW_TYPE_SPLASH, m_hints->_NET_WM_WINDOW_TYPE_DROPDOWN_MENU,
            m_hints->_NET_WM_WINDOW_TYPE_POPUP_MENU, m_hints->_NET_WM_WINDOW_TYPE_TOOLTIP,
            m_hints->_NET_WM_WINDOW_TYPE_NOTIFICATION, m_hints->_NET_WM_WINDOW_TYPE_COMBO,
            m_hints->_NET_WM_WINDOW_TYPE_DND};
        const auto types = m_types.words().value_or(Words());
        const auto found = std::ranges::find_first_of(types, known);
        return found != types.end() ? *found : m_hints->_NET_WM_WINDOW_TYPE_NORMAL;
    }

    [[nodiscard]] qint64 layerOf(xcb_atom_t type) const
    {
        constexpr qint64 kOrdinary = 0;
        constexpr qint64 kOverlay = 25;
        const bool isOrdinary = type == m_hints->_NET_WM_WINDOW_TYPE_NORMAL
            || type == m_hints->_NET_WM_WINDOW_TYPE_DIALOG || type == m_hints->_NET_WM_WINDOW_TYPE_UTILITY;
        return isOrdinary ? kOrdinary : kOverlay;
    }

    const X11Display& m_display;
    const X11Hints& m_hints;
    xcb_window_t m_window;
    X11Property m_process;
    X11Property m_workspace;
    X11Property m_types;
    X11Property m_states;
    xcb_get_geometry_cookie_t m_size;
};

QSizeF sizeOf(const X11Display& display)
{
    const X11Reply<xcb_get_geometry_reply_t> root(
        xcb_get_geometry_reply(display.connection, xcb_get_geometry(display.connection, display.root), nullptr));
    return root ? QSizeF(root->width, root->height) : QSizeF(0, 0);
}

} // namespace

std::optional<qint64> X11Foreground::frontApplication(const X11Display& display)
{
    const X11Hints hints(display.connection);
    if (!hints.isValid())
        return std::nullopt;
    Manager manager(display, hints);
    auto active = ask(display, display.root, hints->_NET_ACTIVE_WINDOW, XCB_ATOM_WINDOW);
    manager.follow();
    const auto window = active.word().value_or(XCB_WINDOW_NONE);
    if (window == XCB_WINDOW_NONE)
        return std::nullopt;
    auto process = ask(display, window, hints->_NET_WM_PID, XCB_ATOM_CARDINAL);
    const auto size = xcb_get_geometry(display.connection, window);
    const auto owner = ownerOf(window, process.word());
    // A window manager may go on naming a window that was closed.
    const bool isThere =
        X11Reply<xcb_get_geometry_reply_t>(xcb_get_geometry_reply(display.connection, size, nullptr)) != nullptr;
    return isThere && manager.isThere() ? std::optional(owner) : std::nullopt;
}

std::optional<std::vector<ScreenWindow>> X11Foreground::windows(const X11Display& display)
{
    const X11Hints hints(display.connection);
    if (!hints.isValid())
        return std::nullopt;
    Manager manager(display, hints);
    auto stacking =
        ask(display, display.root, hints->_NET_CLIENT_LIST_STACKING, XCB_ATOM_WINDOW, X11Property::kMostWindows);
    auto clients = ask(display, display.root, hints->_NET_CLIENT_LIST, XCB_ATOM_WINDOW, X11Property::kMostWindows);
    auto workspace = ask(display, display.root, hints->_NET_CURRENT_DESKTOP, XCB_ATOM_CARDINAL);
    manager.follow();
    auto listed = stacking.words();
    if (!listed)
        listed = clients.words();
    if (!listed)
        return std::nullopt;

    std::vector<WindowQuestions> questions;
    questions.reserve(listed->size());
    for (const auto window : std::views::reverse(*listed))
        questions.emplace_back(display, hints, window);
    const auto current = workspace.word();
    std::vector<ScreenWindow> windows;
    for (auto& asked : questions) {
        if (const auto window = asked.answer(current))
            windows.push_back(*window);
    }
    return manager.isThere() ? std::optional(std::move(windows)) : std::nullopt;
}

std::vector<QSizeF> X11Foreground::screens(const X11Display& display)
{
    std::vector<QSizeF> screens;
    const auto* const extension = xcb_get_extension_data(display.connection, &xcb_randr_id);
    if (extension != nullptr && extension->present != 0) {
        constexpr uint8_t kActiveOnly = 1;
        const X11Reply<xcb_randr_get_monitors_reply_t> reply(xcb_randr_get_monitors_reply(
            display.connection, xcb_randr_get_monitors(display.connection, display.root, kActiveOnly), nullptr));
        auto monitors =
            reply ? xcb_randr_get_monitors_monitors_iterator(reply.get()) : xcb_randr_monitor_info_iterator_t {};
        for (; monitors.rem > 0; xcb_randr_monitor_info_next(&monitors))
            screens.emplace_back(monitors.data->width, monitors.data->height);
    }
    if (screens.empty())
        screens.push_back(sizeOf(display));
    return screens;
}

} // namespace orvella
