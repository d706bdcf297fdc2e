#include "platform/linux/x11/X11Atom.h"

#include "platform/linux/x11/X11Reply.h"

#include <xcb/xcb.h>

namespace orvella {

quint32 x11Atom(xcb_connection_t* connection, std::string_view name)
{
    return x11Atoms(connection, {name}).front();
}

std::vector<quint32> x11Atoms(xcb_connection_t* connection, std::initializer_list<std::string_view> names)
{
    std::vector<xcb_intern_atom_cookie_t> questions;
    for (const auto name : names)
        questions.push_back(xcb_intern_atom(connection, 0, static_cast<uint16_t>(name.size()), name.data()));
    std::vector<quint32> atoms;
    for (const auto question : questions) {
        const X11Reply<xcb_intern_atom_reply_t> answer(xcb_intern_atom_reply(connection, question, nullptr));
        atoms.push_back(answer ? answer->atom : xcb_atom_t {XCB_ATOM_NONE});
    }
    return atoms;
}

} // namespace orvella
