#include "signals/AppSignalClassifier.h"

#include <benchmark/benchmark.h>

#include <vector>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr int kApplications = 200;

std::vector<RunningApplication> applications(const QString& identifier, const QString& name)
{
    std::vector<RunningApplication> result;
    for (int number = 0; number < kApplications; ++number)
        result.push_back({
            .isRegular = true,
            .identifier = identifier + QString::number(number),
            .name = name + QString::number(number),
        });
    return result;
}

/// Applications that no key fits: every key is searched for in every text.
void twoHundredUnknownApplications(benchmark::State& state)
{
    const auto running = applications(u"org.example.Gyroscope.Viewer"_s, u"Gyroscope Viewer for Laboratories "_s);
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(AppSignalClassifier::categories(running));
}

/// A desktop on which every other application belongs to a category.
void twoHundredMixedApplications(benchmark::State& state)
{
    auto running = applications(u"org.mozilla.Firefox"_s, u"Firefox Web Browser"_s);
    const QString known[] {u"org.gnome.Terminal"_s, u"com.slack.Slack"_s, u"md.obsidian.Obsidian"_s, u"org.blender"_s};
    for (std::size_t place = 0; place < running.size(); place += 2)
        running[place].identifier = known[place / 2 % std::size(known)];
    for ([[maybe_unused]] auto round : state)
        benchmark::DoNotOptimize(AppSignalClassifier::categories(running));
}

BENCHMARK(twoHundredUnknownApplications)->Unit(benchmark::kMicrosecond);
BENCHMARK(twoHundredMixedApplications)->Unit(benchmark::kMicrosecond);

} // namespace
