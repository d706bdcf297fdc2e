#pragma once

#include <QtGlobal>

#include <chrono>
#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace orvella {

class Sleep;

/// The program's only source of time. It runs on while the machine is suspended and never jumps.
class Clock {
public:
    using duration = std::chrono::nanoseconds;
    using rep = duration::rep;
    using period = duration::period;
    using time_point = std::chrono::time_point<Clock>;
    static constexpr bool is_steady = true;

    /// Names a timer while it runs.
    enum class TimerId : qint64 {};

    virtual ~Clock() = default;

    [[nodiscard]] virtual time_point now() const = 0;
    /// How much of that time the machine has been suspended in all.
    [[nodiscard]] virtual duration suspended() const = 0;

    /// Calls `elapsed` once from the main loop, `pause` or a little more from now. Time in which the machine is
    /// suspended does not count.
    virtual TimerId startTimer(duration pause, std::function<void()> elapsed) = 0;
    /// A timer for which that time counts: it elapses soon after waking where it became due in between.
    virtual TimerId startAlarm(duration pause, std::function<void()> elapsed) = 0;
    /// Either of the two.
    virtual void stopTimer(TimerId timer) = 0;

    /// Waits in a coroutine, as a timer does. Ends early when `stop` is requested: ask the token afterwards.
    [[nodiscard]] Sleep sleep(duration pause, std::stop_token stop);
    /// Waits as an alarm does.
    [[nodiscard]] Sleep sleepThroughSuspension(duration pause, std::stop_token stop);
};

using Instant = Clock::time_point;

/// The wait of `Clock::sleep` and `Clock::sleepThroughSuspension`.
class [[nodiscard]] Sleep final {
public:
    /// Starts the timer that ends the wait.
    using Start = Clock::TimerId (Clock::*)(Clock::duration, std::function<void()>);

    Sleep(Clock& clock, Start start, Clock::duration pause, std::stop_token stop);

    [[nodiscard]] bool await_ready() const noexcept { return m_stop.stop_requested(); }
    void await_suspend(std::coroutine_handle<> waiting);
    void await_resume() const noexcept {}

private:
    struct State {
        Clock::TimerId timer {};
        std::optional<std::stop_callback<std::function<void()>>> onStop;
    };

    Clock& m_clock;
    Start m_start;
    Clock::duration m_pause;
    std::stop_token m_stop;
    std::unique_ptr<State> m_state;
};

/// Real time.
class SystemClock final : public Clock {
public:
    SystemClock();
    ~SystemClock() override;

    [[nodiscard]] time_point now() const override;
    [[nodiscard]] duration suspended() const override;
    TimerId startTimer(duration pause, std::function<void()> elapsed) override;
    TimerId startAlarm(duration pause, std::function<void()> elapsed) override;
    void stopTimer(TimerId timer) override;

private:
    class Timers;
    class Alarms;
    std::unique_ptr<Timers> m_timers;
    std::unique_ptr<Alarms> m_alarms;
};

} // namespace orvella
