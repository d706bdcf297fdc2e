#include "platform/linux/x11/X11Hints.h"

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
    if (!m_isValid) {
        const auto& library = m_library.emplace();
        m_isValid = library.isReady()
            && library.initAtomsReplies(&m_hints, library.initAtoms(m_connection, &m_hints), nullptr) != 0;
    }
    return *m_isValid;
}

const xcb_ewmh_connection_t* X11Hints::operator->() const
{
    static_cast<void>(isValid());
    return &m_hints;
}

void X11Hints::setUserTime(xcb_window_t window, xcb_timestamp_t time) const
{
    if (isValid())
        m_library->setUserTime(&m_hints, window, time);
}

void X11Hints::requestWorkspace(int screen, xcb_window_t window, uint32_t workspace) const
{
    if (isValid())
        m_library->requestWorkspace(&m_hints, screen, window, workspace, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER);
}

void X11Hints::requestActivation(int screen, xcb_window_t window, xcb_timestamp_t time) const
{
    if (isValid())
        m_library->requestActivation(
            &m_hints, screen, window, XCB_EWMH_CLIENT_SOURCE_TYPE_OTHER, time, XCB_WINDOW_NONE);
}

} // namespace orvella
