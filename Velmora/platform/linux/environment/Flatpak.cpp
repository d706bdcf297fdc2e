#include "platform/linux/environment/Flatpak.h"

#include <QProcessEnvironment>

namespace orvella {

bool isInFlatpak(const QProcessEnvironment& environment)
{
    return !environment.value(QStringLiteral("FLATPAK_ID")).isEmpty();
}

} // namespace orvella
