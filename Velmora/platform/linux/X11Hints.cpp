#include "platform/linux/X11Hints.h"

namespace orvella {

X11Hints::X11Hints(xcb_connection_t* connection)
    : m_isValid(xcb_ewmh_init_atoms_replies(&m_hints, xcb_ewmh_init_atoms(connection, &m_hints), nullptr) != 0)
{
}

X11Hints::~X11Hints()
{
    if (m_isValid)
        xcb_ewmh_connection_wipe(&m_hints);
}

} // namespace orvella
