#include "platform/linux/X11Hints.h"

namespace orvella {

X11Hints::X11Hints(xcb_connection_t* connection)
    : m_connection(connection)
{
}

X11Hints::~X11Hints()
{
    if (m_isValid == true)
        xcb_ewmh_connection_wipe(&m_hints);
}

bool X11Hints::isValid() const
{
    if (!m_isValid)
        m_isValid = xcb_ewmh_init_atoms_replies(&m_hints, xcb_ewmh_init_atoms(m_connection, &m_hints), nullptr) != 0;
    return *m_isValid;
}

xcb_ewmh_connection_t* X11Hints::get() const
{
    static_cast<void>(isValid());
    return &m_hints;
}

} // namespace orvella
