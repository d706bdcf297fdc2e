#include "support/plugins/OldUpdater.h"

#include <QCoreApplication>
#include <QVariant>

namespace orvella {

namespace {

void leaveMark()
{
    qApp->setProperty("oldUpdaterRan", true);
}

Q_CONSTRUCTOR_FUNCTION(leaveMark)

} // namespace

} // namespace orvella
