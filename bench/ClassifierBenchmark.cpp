#include "signals/AppSignalClassifier.h"

#include <benchmark/benchmark.h>

#include <vector>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

std::vector<RunningApplication> applications(qint64 count, const QString& identifier, const QString& name)
{
    std::vector<RunningApplication> result;
    for (qint64 number = 0; number < count; ++number)
        result.push_back({
            .isRegular = true,
            .identifier = identifier + QString::number(number),
            .name = name + QString::number(number),
        });
    return result;
}

void classify(benchmark::State& state, const std::vector<RunningApplication>& running)
{
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(AppSignalClassifier::categories(running));
    state.SetComplexityN(state.range(0));
}

/// Applications that no key fits: every key is searched for in every text.
void unknownApplications(benchmark::State& state)
{
    classify(state,
        applications(state.range(0), u"org.example.Gyroscope.Viewer"_s, u"Gyroscope Viewer for Laboratories "_s));
}

/// A desktop on which every other application belongs to a category.
void mixedApplications(benchmark::State& state)
{
    auto running = applications(state.range(0), u"org.mozilla.Firefox"_s, u"Firefox Web Browser"_s);
    const QString known[] {u"org.gnome.Terminal"_s, u"com.slack.Slack"_s, u"md.obsidian.Obsidian"_s, u"org.blender"_s};
    for (std::size_t place = 0; place < running.size(); place += 2)
        running[place].identifier = known[place / 2 % std::size(known)];
    classify(state, running);
}

BENCHMARK(unknownApplications)->RangeMultiplier(4)->Range(10, 10'000)->Complexity()->Unit(benchmark::kMicrosecond);
BENCHMARK(mixedApplications)->RangeMultiplier(4)->Range(10, 10'000)->Complexity()->Unit(benchmark::kMicrosecond);

} // namespace
