#include "base/Clock.h"

#include "base/WakeTimer.h"

#include <QObject>
#include <QTimerEvent>

#include <ctime>
#include <map>
#include <unordered_map>

namespace orvella {

namespace {

// The time since boot, suspended time included, and without it. Where there is no clock of the first kind, the
// monotonic one counts suspension.
#ifdef CLOCK_BOOTTIME
constexpr clockid_t kElapsedTime = CLOCK_BOOTTIME;
constexpr clockid_t kAwakeTime = CLOCK_MONOTONIC;
#else
constexpr clockid_t kElapsedTime = CLOCK_MONOTONIC;
constexpr clockid_t kAwakeTime = CLOCK_UPTIME_RAW;
#endif

Clock::duration elapsed(clockid_t clock)
{
    timespec time {};
    clock_gettime(clock, &time);
    return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

// Coarse timers may elapse up to 5 % early, and a second of an ad must not be short.
constexpr auto kLongestPreciseTimer = std::chrono::minutes(1);

} // namespace

Sleep Clock::sleep(duration pause, std::stop_token stop)
{
    return Sleep(*this, &Clock::startTimer, pause, std::move(stop));
}

Sleep Clock::sleepThroughSuspension(duration pause, std::stop_token stop)
{
    return Sleep(*this, &Clock::startAlarm, pause, std::move(stop));
}

Sleep::Sleep(Clock& clock, Start start, Clock::duration pause, std::stop_token stop)
    : m_clock(clock)
    , m_start(start)
    , m_pause(pause)
    , m_stop(std::move(stop))
    , m_state(std::make_unique<State>())
{
}

void Sleep::await_suspend(std::coroutine_handle<> waiting)
{
    auto* const state = m_state.get();
    state->timer = (m_clock.*m_start)(m_pause, [state, waiting] {
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

/// Their numbers are negative, those of the timers are not.
class SystemClock::Alarms final {
public:
    explicit Alarms(const SystemClock& clock)
        : m_clock(clock)
        , m_next([this] { fire(); })
    {
    }

    TimerId start(duration pause, std::function<void()> elapsed)
    {
        m_alarms.emplace(Due {m_clock.now() + pause, --m_lastId}, std::move(elapsed));
        arm();
        return TimerId {m_lastId};
    }

    void stop(TimerId timer)
    {
        if (std::erase_if(m_alarms, [timer](const auto& alarm) { return TimerId {alarm.first.id} == timer; }) != 0)
            arm();
    }

private:
    struct Due {
        time_point at;
        qint64 id;

        friend auto operator<=>(const Due&, const Due&) = default;
    };

    void fire()
    {
        // What the call starts may be due at once; it has its turn when the main loop has been elsewhere.
        if (!m_alarms.empty() && m_alarms.begin()->first.at <= m_clock.now())
            m_alarms.extract(m_alarms.begin()).mapped()();
        arm();
    }

    void arm()
    {
        if (m_alarms.empty())
            m_next.clear();
        else
            m_next.set(m_alarms.begin()->first.at - m_clock.now());
    }

    const SystemClock& m_clock;
    WakeTimer m_next;
    std::map<Due, std::function<void()>> m_alarms;
    qint64 m_lastId = 0;
};

SystemClock::SystemClock()
    : m_timers(std::make_unique<Timers>())
    , m_alarms(std::make_unique<Alarms>(*this))
{
}

SystemClock::~SystemClock() = default;

Clock::time_point SystemClock::now() const
{
    return time_point(elapsed(kElapsedTime));
}

Clock::duration SystemClock::suspended() const
{
    const auto awake = elapsed(kAwakeTime);
    return elapsed(kElapsedTime) - awake;
}

Clock::TimerId SystemClock::startTimer(duration pause, std::function<void()> elapsed)
{
    return m_timers->start(std::chrono::ceil<std::chrono::milliseconds>(pause), std::move(elapsed));
}

Clock::TimerId SystemClock::startAlarm(duration pause, std::function<void()> elapsed)
{
    return m_alarms->start(pause, std::move(elapsed));
}

void SystemClock::stopTimer(TimerId timer)
{
    m_alarms->stop(timer);
    m_timers->stop(timer);
}

} // namespace orvella
