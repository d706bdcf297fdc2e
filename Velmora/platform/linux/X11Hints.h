#pragma once

#include <xcb/xcb_ewmh.h>

#include <optional>

namespace orvella {

/// The atoms of the Extended Window Manager Hints on one connection. They are learned when they are first needed, in
/// one round trip.
class X11Hints final {
public:
    /// As the number of a workspace: the window is on each of them.
    static constexpr uint32_t kAllWorkspaces = 0xFFFFFFFF;

    explicit X11Hints(xcb_connection_t* connection);
    X11Hints(const X11Hints&) = delete;
    X11Hints& operator=(const X11Hints&) = delete;
    ~X11Hints();

    /// False once the connection is lost; then there are no atoms.
    [[nodiscard]] bool isValid() const;

    [[nodiscard]] const xcb_ewmh_connection_t* operator->() const { return get(); }

    /// For the functions of the library, none of which changes it.
    [[nodiscard]] xcb_ewmh_connection_t* get() const;

private:
    xcb_connection_t* m_connection;
    mutable xcb_ewmh_connection_t m_hints {};
    /// Nothing until it is known.
    mutable std::optional<bool> m_isValid;
};

} // namespace orvella
