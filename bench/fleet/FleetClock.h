#pragma once

#include "base/Clock.h"

#include <queue>
#include <unordered_map>

namespace orvella::fleet {

/// Virtual time for very many sleepers: neither the next of them nor one that is stopped is looked for among the rest.
/// No machine is ever suspended.
class FleetClock final : public Clock {
public:
    [[nodiscard]] time_point now() const override { return m_now; }
    [[nodiscard]] duration suspended() const override { return {}; }

    TimerId startTimer(duration pause, std::function<void()> elapsed) override;
    TimerId startAlarm(duration pause, std::function<void()> elapsed) override;
    void stopTimer(TimerId timer) override;

    /// Lets time pass: the timers that are due elapse one after the other, each at its own time, and after each of them
    /// the main loop's posted work is done.
    void advanceTo(time_point end);

    /// How many timers run.
    [[nodiscard]] std::size_t running() const { return m_elapsed.size(); }

private:
    struct Due {
        time_point at;
        qint64 order;

        friend auto operator<=>(const Due&, const Due&) = default;
    };

    time_point m_now {std::chrono::hours(1)};
    qint64 m_lastId = 0;
    /// Those that were stopped are still here.
    std::priority_queue<Due, std::vector<Due>, std::greater<>> m_due;
    std::unordered_map<qint64, std::function<void()>> m_elapsed;
};

} // namespace orvella::fleet
