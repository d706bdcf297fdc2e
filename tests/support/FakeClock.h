#pragma once

#include "base/Clock.h"

#include <map>
#include <optional>

namespace orvella {

/// Virtual time: nothing passes until the test says so.
class FakeClock final : public Clock {
public:
    [[nodiscard]] time_point now() const override { return m_now; }

    [[nodiscard]] duration suspended() const override { return m_suspended; }

    TimerId startTimer(duration pause, std::function<void()> elapsed) override;
    TimerId startAlarm(duration pause, std::function<void()> elapsed) override;
    void stopTimer(TimerId timer) override;

    /// Lets time pass: the timers that are due elapse one after the other, each at its own time, and after each of them
    /// the main loop's posted work is done.
    void advance(duration pause);

    /// Lets time pass while the machine is suspended, and wakes it: timers stand still, and alarms that became due
    /// elapse in the end.
    void suspend(duration pause);

    /// Lets the next timer elapse at its time, without the work that it posts; false where there is none.
    bool elapseNext();

    /// Lets time pass in which the machine is suspended. Whatever became due has not elapsed yet.
    void standStill(duration pause);

    /// Lets time pass in which the machine runs and the program does not.
    void skip(duration pause) { m_now += pause; }

    /// How many flows are asleep.
    [[nodiscard]] std::size_t sleepers() const { return m_timers.size(); }

    /// How long the next of them still sleeps; nothing where nobody does.
    [[nodiscard]] std::optional<duration> nextPause() const
    {
        return m_timers.empty() ? std::nullopt : std::optional(m_timers.begin()->first.at - m_now);
    }

private:
    struct Due {
        time_point at;
        qint64 order;

        friend auto operator<=>(const Due&, const Due&) = default;
    };

    enum class Counts { awakeTime, allTime };

    struct Timer {
        Counts counts;
        std::function<void()> elapsed;
    };

    TimerId start(duration pause, Timer timer);

    time_point m_now {std::chrono::hours(1)};
    duration m_suspended {};
    qint64 m_lastId = 0;
    std::map<Due, Timer> m_timers;
};

/// Does what the main loop has been given to do, and what that gives it, over many rounds.
void settle();

} // namespace orvella
