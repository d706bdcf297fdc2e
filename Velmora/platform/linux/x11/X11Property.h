#pragma once

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>

#include <QByteArray>

#include <optional>
#include <vector>

namespace orvella {

/// A property of a window that an X server was asked for. Ask for all that is needed before reading the first answer:
/// on a display that is far away each wait counts.
class X11Property final {
public:
    static constexpr uint32_t kMostUnits = 1024;
    /// For a list of windows.
    static constexpr uint32_t kMostWindows = 65536;

    struct Question {
        xcb_window_t window = XCB_WINDOW_NONE;
        xcb_atom_t property = XCB_ATOM_NONE;
        xcb_atom_t type = XCB_ATOM_NONE;
        /// As much of it as is read, in units of four bytes.
        uint32_t mostUnits = kMostUnits;
    };

    /// Sends the question.
    X11Property(xcb_connection_t* connection, const Question& question);
    X11Property(X11Property&& other) noexcept;
    X11Property& operator=(X11Property&&) = delete;
    ~X11Property();

    // Each waits for the answer, which can be read once. Nothing where there is no such property of this type, and
    // where the window is gone.

    [[nodiscard]] std::optional<std::vector<uint32_t>> words();
    /// The first of the words.
    [[nodiscard]] std::optional<uint32_t> word();
    [[nodiscard]] std::optional<QByteArray> bytes();

private:
    [[nodiscard]] X11Reply<xcb_get_property_reply_t> answer(int format);

    xcb_connection_t* m_connection;
    std::optional<xcb_get_property_cookie_t> m_pending;
};

} // namespace orvella
