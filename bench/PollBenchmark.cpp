#include "api/Endpoints.h"
#include "fleet/Fleet.h"

#include <QCoreApplication>
#include <benchmark/benchmark.h>

using namespace orvella;
using namespace std::chrono_literals;

namespace {

/// So many days of one device's polls, in virtual time.
void daysOfPolls(benchmark::State& state)
{
    int count = 1;
    char name[] = "PollBenchmark";
    char* arguments[] {name, nullptr};
    const QCoreApplication application(count, arguments);
    const std::chrono::days days(state.range(0));
    for ([[maybe_unused]] auto round : state) {
        fleet::Fleet device(1, {50ms, 50ms});
        device.startBetween(0s, 0s, fleet::Fleet::Shape::even);
        device.liveUntil(days);
        // Every 300 seconds but for the time that the requests take.
        if (device.arrivals().count(endpoints::kAdsAvailable) < days / 301s)
            state.SkipWithError("Polls are missing.");
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(daysOfPolls)->Arg(1)->Arg(2)->Arg(4)->Arg(8)->Arg(15)->Arg(30)->Complexity()->Unit(benchmark::kMillisecond);

} // namespace
