#pragma once

#include <xcb/xcb_ewmh.h>

namespace orvella {

/// The atoms of the Extended Window Manager Hints on one connection. It takes one round trip to learn them.
class X11Hints final {
public:
    /// As the number of a workspace: the window is on each of them.
    static constexpr uint32_t kAllWorkspaces = 0xFFFFFFFF;

    explicit X11Hints(xcb_connection_t* connection);
    X11Hints(const X11Hints&) = delete;
    X11Hints& operator=(const X11Hints&) = delete;
    ~X11Hints();

    /// False once the connection is lost; then there are no atoms.
    [[nodiscard]] bool isValid() const { return m_isValid; }

    [[nodiscard]] const xcb_ewmh_connection_t* operator->() const { return &m_hints; }

    /// For the functions of the library, none of which changes it.
    [[nodiscard]] xcb_ewmh_connection_t* get() { return &m_hints; }

private:
    xcb_ewmh_connection_t m_hints {};
    bool m_isValid;
};

} // namespace orvella
