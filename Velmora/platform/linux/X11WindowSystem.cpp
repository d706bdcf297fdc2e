#include "platform/linux/X11WindowSystem.h"

#include "platform/linux/X11Reply.h"

namespace orvella {

X11WindowSystem::X11WindowSystem(const X11Display& display)
    : m_display(display)
    , m_hints(display.connection)
    , m_activation(display, m_hints)
    , m_presses(display)
{
}

bool X11WindowSystem::isCompositing() const
{
    if (!m_hints.isValid())
        return false;
    // Who manages the composition of the screen owns this selection.
    const auto question = xcb_get_selection_owner(m_display.connection, m_hints->_NET_WM_CM_Sn[m_display.screen]);
    const X11Reply<xcb_get_selection_owner_reply_t> answer(
        xcb_get_selection_owner_reply(m_display.connection, question, nullptr));
    return answer && answer->owner != XCB_WINDOW_NONE;
}

} // namespace orvella
