#include "platform/linux/X11Atom.h"

#include "platform/linux/X11Reply.h"

#include <xcb/xcb.h>

namespace orvella {

quint32 x11Atom(xcb_connection_t* connection, std::string_view name)
{
    const auto question = xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.data());
    const X11Reply<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(connection, question, nullptr));
    return answer ? answer->atom : xcb_atom_t {XCB_ATOM_NONE};
}

} // namespace orvella
