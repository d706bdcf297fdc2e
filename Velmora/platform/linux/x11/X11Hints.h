#pragma once

#include "platform/linux/x11/HintsLibrary.h"

#include <optional>

namespace orvella {

/// The atoms and requests of the Extended Window Manager Hints on one connection. The atoms are learned when they are
/// first needed, in one round trip.
class X11Hints final {
public:
    /// As the number of a workspace: the window is on each of them.
    static constexpr uint32_t kAllWorkspaces = 0xFFFFFFFF;

    explicit X11Hints(xcb_connection_t* connection);
    X11Hints(const X11Hints&) = delete;
    X11Hints& operator=(const X11Hints&) = delete;
    ~X11Hints();

    /// False once the connection is lost, and without the library; then there are no atoms, and requests do nothing.
    [[nodiscard]] bool isValid() const;

    [[nodiscard]] const xcb_ewmh_connection_t* operator->() const;

    // The requests are made as the viewer's own wish. The connection is not flushed.
    void setUserTime(xcb_window_t window, xcb_timestamp_t time) const;
    void requestWorkspace(int screen, xcb_window_t window, uint32_t workspace) const;
    void requestActivation(int screen, xcb_window_t window, xcb_timestamp_t time) const;

private:
    xcb_connection_t* m_connection;
    mutable std::optional<HintsLibrary> m_library;
    mutable xcb_ewmh_connection_t m_hints {};
    /// Nothing until it is known.
    mutable std::optional<bool> m_isValid;
};

} // namespace orvella
