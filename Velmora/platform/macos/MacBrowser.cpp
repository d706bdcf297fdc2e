#include "platform/macos/MacBrowser.h"

#include "base/WebAddress.h"
#include "platform/macos/CocoaWorkspace.h"

namespace orvella {

MacBrowser::MacBrowser(CocoaWorkspace& workspace)
    : m_workspace(workspace)
{
}

bool MacBrowser::open(const QUrl& page)
{
    // Everything else would start whatever program the system has for it.
    const auto address = webAddress(QString::fromLatin1(page.toEncoded()));
    return address && m_workspace.open(address->toEncoded().toStdString());
}

} // namespace orvella
