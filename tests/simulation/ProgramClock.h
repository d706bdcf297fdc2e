#pragma once

#include "base/Clock.h"

#include <set>

namespace orvella::simulation {

/// The world's clock as the program has it: knows what the program waits for.
class ProgramClock final : public Clock {
public:
    explicit ProgramClock(Clock& world);

    [[nodiscard]] time_point now() const override { return m_world.now(); }
    [[nodiscard]] duration suspended() const override { return m_world.suspended(); }
    TimerId startTimer(duration pause, std::function<void()> elapsed) override;
    TimerId startAlarm(duration pause, std::function<void()> elapsed) override;
    void stopTimer(TimerId timer) override;

    /// How many timers of the program run.
    [[nodiscard]] std::size_t running() const { return m_running.size(); }

private:
    using Start = TimerId (Clock::*)(duration, std::function<void()>);

    TimerId start(Start how, duration pause, std::function<void()> elapsed);

    Clock& m_world;
    std::set<TimerId> m_running;
};

} // namespace orvella::simulation
