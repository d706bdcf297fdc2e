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

    /// Calls `elapsed` once from the main loop, `pause` or a little more from now.
    virtual TimerId startTimer(duration pause, std::function<void()> elapsed) = 0;
    virtual void stopTimer(TimerId timer) = 0;

    /// Waits in a coroutine. Ends early when `stop` is requested: ask the token afterwards.
    [[nodiscard]] Sleep sleep(duration pause, std::stop_token stop);
};

using Instant = Clock::time_point;

/// The wait of `Clock::sleep`.
class [[nodiscard]] Sleep final {
public:
    Sleep(Clock& clock, Clock::duration pause, std::stop_token stop);

    [[nodiscard]] bool await_ready() const noexcept { return m_stop.stop_requested(); }
    void await_suspend(std::coroutine_handle<> waiting);
    void await_resume() const noexcept {}

private:
    struct State {
        Clock::TimerId timer {};
        std::optional<std::stop_callback<std::function<void()>>> onStop;
    };

    Clock& m_clock;
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
    TimerId startTimer(duration pause, std::function<void()> elapsed) override;
    void stopTimer(TimerId timer) override;

private:
    class Timers;
    std::unique_ptr<Timers> m_timers;
};

} // namespace orvella
