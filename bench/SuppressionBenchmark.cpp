#include "core/CreativeSuppression.h"
#include "support/FakeClock.h"

#include <benchmark/benchmark.h>

#include <vector>

using namespace orvella;
using namespace std::chrono_literals;

namespace {

constexpr auto kRest = 300s;

std::vector<QString> creatives(qint64 count)
{
    std::vector<QString> result;
    for (qint64 number = 0; number < count; ++number)
        result.push_back(QStringLiteral("creative-%1").arg(number));
    return result;
}

/// One question after the other, for each in its turn, while so many creatives rest.
void questionAmongRestingCreatives(benchmark::State& state)
{
    const FakeClock clock;
    CreativeSuppression suppression(clock);
    const auto resting = creatives(state.range(0));
    for (const auto& creative : resting)
        suppression.suppress(creative);
    std::size_t next = 0;
    for ([[maybe_unused]] auto round : state) {
        benchmark::DoNotOptimize(suppression.isSuppressed(resting[next]));
        next = next + 1 == resting.size() ? 0 : next + 1;
    }
    state.SetComplexityN(state.range(0));
}

/// So many creatives that begin to rest one after the other, and all of which the next question finds rested.
void creativesThatRestAndAreForgotten(benchmark::State& state)
{
    const auto resting = creatives(state.range(0));
    for ([[maybe_unused]] auto round : state) {
        FakeClock clock;
        CreativeSuppression suppression(clock);
        for (const auto& creative : resting)
            suppression.suppress(creative);
        clock.skip(kRest);
        if (suppression.isSuppressed(resting.back()) || suppression.count() != 0)
            state.SkipWithError("A creative rests for too long.");
    }
    state.SetComplexityN(state.range(0));
}

BENCHMARK(questionAmongRestingCreatives)->RangeMultiplier(10)->Range(1, 100'000)->Complexity();
BENCHMARK(creativesThatRestAndAreForgotten)
    ->RangeMultiplier(10)
    ->Range(1, 100'000)
    ->Complexity()
    ->Unit(benchmark::kMicrosecond);

} // namespace
