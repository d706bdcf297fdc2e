#include "platform/linux/x11/HintsLibrary.h"

#include "base/LateLibrary.h"

namespace orvella {

HintsLibrary::HintsLibrary()
{
    LateLibrary library(QStringLiteral("xcb-ewmh"), 2);
    library.find(initAtoms, "xcb_ewmh_init_atoms");
    library.find(initAtomsReplies, "xcb_ewmh_init_atoms_replies");
    library.find(setUserTime, "xcb_ewmh_set_wm_user_time");
    library.find(requestWorkspace, "xcb_ewmh_request_change_wm_desktop");
    library.find(requestActivation, "xcb_ewmh_request_change_active_window");
    m_isReady = library.isWhole();
    if (!m_isReady)
        qWarning("libxcb-ewmh cannot be used: %s", qUtf8Printable(library.missing()));
}

} // namespace orvella
