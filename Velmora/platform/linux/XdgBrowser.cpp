#include "platform/linux/XdgBrowser.h"

#include "base/WebAddress.h"

#include <QDesktopServices>

namespace orvella {

bool XdgBrowser::open(const QUrl& page)
{
    // Everything else would start whatever program the desktop has for it.
    const auto address = webAddress(QString::fromLatin1(page.toEncoded()));
    return address && QDesktopServices::openUrl(*address);
}

} // namespace orvella
