#pragma once

#include <QtGlobal>

#include <string_view>

struct xcb_connection_t;

namespace orvella {

/// The number that an X server has given a name. It takes one round trip; 0 where the server is gone.
[[nodiscard]] quint32 x11Atom(xcb_connection_t* connection, std::string_view name);

} // namespace orvella
