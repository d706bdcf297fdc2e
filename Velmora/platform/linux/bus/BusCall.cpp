#include "platform/linux/bus/BusCall.h"

#include <QDBusPendingCallWatcher>

#include <functional>
#include <limits>
#include <utility>

namespace orvella {

/// Shared by the waiting flow and by what may end its wait.
struct BusCall::State {
    Clock& clock;
    std::coroutine_handle<> waiting;
    std::unique_ptr<QDBusPendingCallWatcher, void (*)(QDBusPendingCallWatcher*)> answer;
    std::optional<Ending> ending;
    std::optional<Clock::TimerId> timer;
    std::optional<std::stop_callback<std::function<void()>>> onStop;

    State(Clock& time, std::coroutine_handle<> flow, const QDBusPendingCall& call)
        : clock(time)
        , waiting(flow)
        // It may be its own signal that ends the wait.
        , answer(new QDBusPendingCallWatcher(call), [](QDBusPendingCallWatcher* watcher) { watcher->deleteLater(); })
    {
    }

    void end(Ending how)
    {
        if (ending)
            return;
        ending = how;
        if (timer && how != Ending::timedOut)
            clock.stopTimer(*timer);
        answer->disconnect();
        waiting.resume();
    }
};

BusCall::BusCall(Clock& clock, Clock::duration limit, QDBusConnection bus, QDBusMessage call, std::stop_token stop)
    : m_clock(clock)
    , m_limit(limit)
    , m_bus(std::move(bus))
    , m_call(std::move(call))
    , m_stop(std::move(stop))
{
}

bool BusCall::await_suspend(std::coroutine_handle<> waiting)
{
    // The limit is the clock's alone.
    const auto call = m_bus.asyncCall(m_call, std::numeric_limits<int>::max());
    if (call.isFinished()) {
        m_reply = {.ending = Ending::answered, .message = call.reply()};
        return false;
    }
    m_state = std::make_shared<State>(m_clock, waiting, call);
    // Each holder keeps the state until it has nothing more to say, for resuming the flow destroys this object.
    const auto state = m_state;
    state->timer = m_clock.startTimer(m_limit, [state] { state->end(Ending::timedOut); });
    QObject::connect(
        state->answer.get(), &QDBusPendingCallWatcher::finished, state->answer.get(), [weak = std::weak_ptr(state)] {
            if (const auto answered = weak.lock())
                answered->end(Ending::answered);
        });
    state->onStop.emplace(m_stop, [weak = std::weak_ptr(state)] {
        if (const auto stopped = weak.lock())
            stopped->end(Ending::stopped);
    });
    return true;
}

BusCall::Reply BusCall::await_resume()
{
    if (!m_state)
        return m_reply;
    // A stop that comes later is none of this call's.
    const auto state = std::exchange(m_state, nullptr);
    if (*state->ending != Ending::answered)
        return {.ending = *state->ending, .message = {}};
    return {.ending = Ending::answered, .message = state->answer->reply()};
}

} // namespace orvella
