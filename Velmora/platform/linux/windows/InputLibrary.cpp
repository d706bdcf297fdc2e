#include "platform/linux/windows/InputLibrary.h"

#include "base/LateLibrary.h"

namespace orvella {

InputLibrary::InputLibrary()
{
    LateLibrary library(QStringLiteral("xcb-xinput"), 0);
    library.find(id, "xcb_input_id");
    library.find(queryVersion, "xcb_input_xi_query_version");
    library.find(queryVersionReply, "xcb_input_xi_query_version_reply");
    library.find(selectEvents, "xcb_input_xi_select_events");
    m_isReady = library.isWhole();
    if (!m_isReady)
        qWarning("libxcb-xinput cannot be used: %s", qUtf8Printable(library.missing()));
}

} // namespace orvella
