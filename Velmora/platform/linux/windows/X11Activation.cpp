#include "platform/linux/windows/X11Activation.h"

#include "platform/linux/x11/X11Atom.h"
#include "platform/linux/x11/X11Property.h"

#include <QCoreApplication>

#include <utility>

namespace orvella {

X11Activation::X11Activation(const X11Display& display, X11Hints& hints)
    : m_display(display)
    , m_hints(hints)
{
    QCoreApplication::instance()->installNativeEventFilter(this);
}

void X11Activation::activate(QWindow& window)
{
    if (m_timeProperty == XCB_ATOM_NONE)
        m_timeProperty = x11Atom(m_display.connection, "_ORVELLA_TIME");
    m_window = &window;
    m_windowId = static_cast<xcb_window_t>(window.winId());
    window.raise();
    // The server tells the time of every change of a property, even of one that changes nothing.
    xcb_change_property(
        m_display.connection, XCB_PROP_MODE_APPEND, m_windowId, m_timeProperty, XCB_ATOM_CARDINAL, 32, 0, nullptr);
    xcb_flush(m_display.connection);
}

bool X11Activation::nativeEventFilter(const QByteArray&, void* message, qintptr*)
{
    const auto* const event = static_cast<const xcb_property_notify_event_t*>(message);
    if (m_windowId != XCB_WINDOW_NONE && event->response_type == XCB_PROPERTY_NOTIFY && event->atom == m_timeProperty
        && event->window == m_windowId) {
        const auto* const window = std::exchange(m_window, nullptr).data();
        if (window != nullptr && window->isVisible() && m_hints.isValid())
            request(event->time);
    }
    return false;
}

void X11Activation::request(quint32 time)
{
    const auto ask = [this](xcb_window_t window, xcb_atom_t property, xcb_atom_t type) {
        return X11Property(m_display.connection, {window, property, type});
    };
    auto timeWindow = ask(m_windowId, m_hints->_NET_WM_USER_TIME_WINDOW, XCB_ATOM_WINDOW);
    auto workspace = ask(m_windowId, m_hints->_NET_WM_DESKTOP, XCB_ATOM_CARDINAL);
    auto currentWorkspace = ask(m_display.root, m_hints->_NET_CURRENT_DESKTOP, XCB_ATOM_CARDINAL);

    m_hints.setUserTime(timeWindow.word().value_or(m_windowId), time);
    // Some window managers activate no window that is on another workspace, and the viewer wants it on this one.
    const auto from = workspace.word();
    const auto to = currentWorkspace.word();
    if (from && to && *from != *to && *from != X11Hints::kAllWorkspaces)
        m_hints.requestWorkspace(m_display.screen, m_windowId, *to);
    // The window manager gets to know of the window before it gets this: both go through the server in turn.
    m_hints.requestActivation(m_display.screen, m_windowId, time);
    xcb_flush(m_display.connection);
}

} // namespace orvella
