#include "fleet/Scenario.h"

#include "fleet/Fleet.h"

namespace orvella::fleet {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// From a line in a big town to a phone in the country.
constexpr Fleet::RoundTrips kRoundTrips {10ms, 200ms};
/// The pause between two cycles while the service names none.
constexpr auto kPause = 300s;
constexpr std::chrono::seconds kDisturbed = 1h;
constexpr std::chrono::seconds kBack = 2h;

Scenario normalDay(std::chrono::hours time)
{
    const std::chrono::seconds end = time;
    const auto quarter = end / 4;
    const auto live = [=](qint64 devices) {
        Fleet fleet(devices, kRoundTrips);
        fleet.startBetween(0s, quarter, Fleet::Shape::bell);
        fleet.stopBetween(end - quarter, end, Fleet::Shape::bell);
        fleet.liveUntil(end);
        return fleet.arrivals();
    };
    return {u"day"_s, u"A day: all start in its first quarter, and end in its last"_s,
        {{u"the first quarter"_s, 0s, quarter}, {u"in between"_s, quarter, end - quarter},
            {u"the last quarter"_s, end - quarter, end}},
        {}, live};
}

/// A fleet that has run for long enough for its cycles to lie evenly, until something happens to it.
Arrivals disturbedFleet(qint64 devices, std::chrono::seconds end, const std::function<void(Fleet&)>& prepare)
{
    Fleet fleet(devices, kRoundTrips);
    fleet.startBetween(0s, kPause, Fleet::Shape::even);
    prepare(fleet);
    fleet.liveUntil(end);
    return fleet.arrivals();
}

Scenario outage(
    std::chrono::hours time, ModelService::Condition condition, const QString& name, const QString& description)
{
    const auto prepare = [condition](Fleet& fleet) {
        fleet.at(kDisturbed, [&fleet, condition] { fleet.service().setCondition(condition); });
        fleet.at(kBack, [&fleet] { fleet.service().setCondition(ModelService::Condition::answering); });
    };
    const auto live = [=](qint64 devices) { return disturbedFleet(devices, time, prepare); };
    return {name, description,
        {{u"before"_s, kDisturbed / 2, kDisturbed}, {u"the outage"_s, kDisturbed, kBack},
            {u"ten seconds after it"_s, kBack, kBack + 10s}, {u"the first hour after it"_s, kBack + 10s, kBack + 1h},
            {u"the last half hour"_s, time - 30min, time}},
        kDisturbed, live};
}

Scenario release(std::chrono::hours time, bool spreads, const QString& name, const QString& description)
{
    const auto prepare = [spreads](Fleet& fleet) {
        fleet.at(kDisturbed, [&fleet, spreads] {
            if (spreads)
                fleet.service().spreadPauses(kPause.count() / 2, kPause.count() * 3 / 2);
            fleet.restartAll();
        });
    };
    const auto live = [=](qint64 devices) { return disturbedFleet(devices, time, prepare); };
    return {name, description,
        {{u"before"_s, kDisturbed / 2, kDisturbed}, {u"ten seconds after it"_s, kDisturbed, kDisturbed + 10s},
            {u"the second cycle"_s, kDisturbed + kPause / 2, kDisturbed + kPause * 3 / 2},
            {u"the rest of the first hour"_s, kDisturbed + kPause * 3 / 2, kDisturbed + 1h},
            {u"the last half hour"_s, time - 30min, time}},
        kDisturbed, live};
}

} // namespace

std::vector<Scenario> everyScenario(std::chrono::hours time)
{
    return {
        normalDay(time),
        outage(time, ModelService::Condition::refusing, u"outage-refusing"_s,
            u"An outage of an hour, in which every request is refused at once"_s),
        outage(time, ModelService::Condition::holding, u"outage-holding"_s,
            u"An outage of an hour, in which requests hang; those that still wait are answered at its end"_s),
        release(time, false, u"release"_s, u"A release that restarts everyone in one moment"_s),
        release(time, true, u"release-spread"_s,
            u"The same, and the service names each device a pause by chance from 150 to 450 seconds"_s),
    };
}

} // namespace orvella::fleet
