#pragma once

#include <QtGlobal>

#include <initializer_list>
#include <string_view>
#include <vector>

struct xcb_connection_t;

namespace orvella {

/// The number that an X server has given a name. It takes one round trip; 0 where the server is gone.
[[nodiscard]] quint32 x11Atom(xcb_connection_t* connection, std::string_view name);

/// Those of several names, in their order, in one round trip.
[[nodiscard]] std::vector<quint32> x11Atoms(
    xcb_connection_t* connection, std::initializer_list<std::string_view> names);

} // namespace orvella
