#include "support/plugins/FittingUpdater.h"

#include "platform/Updater.h"

#include <QCoreApplication>
#include <QVariant>

namespace orvella {

namespace {

void count(const char* property)
{
    qApp->setProperty(property, qApp->property(property).toInt() + 1);
}

class CountingUpdater final : public Updater {
public:
    void start() override {}

    void checkForUpdates() override { count("updatersAsked"); }
};

} // namespace

std::unique_ptr<Updater> FittingUpdater::makeUpdater(Clock& /*clock*/, WindowSystem& /*windows*/)
{
    count("updatersMade");
    return std::make_unique<CountingUpdater>();
}

} // namespace orvella
