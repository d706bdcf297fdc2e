#include "base/Clock.h"

#include <QObject>
#include <QTimerEvent>

#include <ctime>
#include <unordered_map>

namespace orvella {

namespace {

// The time since boot, suspended time included. Where it has no clock of its own, the monotonic one counts suspension.
#ifdef CLOCK_BOOTTIME
constexpr clockid_t kElapsedTime = CLOCK_BOOTTIME;
#else
constexpr clockid_t kElapsedTime = CLOCK_MONOTONIC;
#endif

// Coarse timers may elapse up to 5 % early, and a second of an ad must not be short.
constexpr auto kLongestPreciseTimer = std::chrono::minutes(1);

} // namespace

Sleep Clock::sleep(duration pause, std::stop_token stop)
{
    return Sleep(*this, pause, std::move(stop));
}

Sleep::Sleep(Clock& clock, Clock::duration pause, std::stop_token stop)
    : m_clock(clock)
    , m_pause(pause)
    , m_stop(std::move(stop))
    , m_state(std::make_unique<State>())
{
}

void Sleep::await_suspend(std::coroutine_handle<> waiting)
{
    auto* const state = m_state.get();
    state->timer = m_clock.startTimer(m_pause, [state, waiting] {
        state->onStop.reset();
        waiting.resume();
    });
    state->onStop.emplace(m_stop, [state, clock = &m_clock, waiting] {
        clock->stopTimer(state->timer);
        waiting.resume();
    });
}

class SystemClock::Timers final : public QObject {
public:
    TimerId start(std::chrono::milliseconds pause, std::function<void()> elapsed)
    {
        const auto id = startTimer(pause, pause <= kLongestPreciseTimer ? Qt::PreciseTimer : Qt::CoarseTimer);
        m_elapsed.insert_or_assign(id, std::move(elapsed));
        return TimerId {id};
    }

    void stop(TimerId timer)
    {
        if (m_elapsed.erase(static_cast<int>(timer)) != 0)
            killTimer(static_cast<int>(timer));
    }

protected:
    void timerEvent(QTimerEvent* event) override
    {
        killTimer(event->timerId());
        const auto elapsed = m_elapsed.extract(event->timerId());
        elapsed.mapped()();
    }

private:
    std::unordered_map<int, std::function<void()>> m_elapsed;
};

SystemClock::SystemClock()
    : m_timers(std::make_unique<Timers>())
{
}

SystemClock::~SystemClock() = default;

Clock::time_point SystemClock::now() const
{
    timespec elapsed {};
    clock_gettime(kElapsedTime, &elapsed);
    return time_point(std::chrono::seconds(elapsed.tv_sec) + std::chrono::nanoseconds(elapsed.tv_nsec));
}

Clock::TimerId SystemClock::startTimer(duration pause, std::function<void()> elapsed)
{
    return m_timers->start(std::chrono::ceil<std::chrono::milliseconds>(pause), std::move(elapsed));
}

void SystemClock::stopTimer(TimerId timer)
{
    m_timers->stop(timer);
}

} // namespace orvella
