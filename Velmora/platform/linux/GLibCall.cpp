#include "platform/linux/GLibCall.h"

#include <utility>

namespace orvella {

/// Shared by the waiting flow and the callback, which GLib calls in any case, be it long after the flow went on.
struct GLibCall::State {
    Clock& clock;
    GLibPointer<GCancellable> cancellable {g_cancellable_new()};
    GLibPointer<GAsyncResult> result;
    std::coroutine_handle<> waiting;
    std::optional<Ending> ending;
    std::optional<Clock::TimerId> timer;
    std::optional<std::stop_callback<std::function<void()>>> onStop;

    State(Clock& time, std::coroutine_handle<> flow)
        : clock(time)
        , waiting(flow)
    {
    }

    void end(Ending how)
    {
        if (ending)
            return;
        ending = how;
        if (timer && how != Ending::timedOut)
            clock.stopTimer(*timer);
        if (how != Ending::answered)
            g_cancellable_cancel(cancellable.get());
        waiting.resume();
    }
};

GLibCall::GLibCall(Clock& clock, std::optional<Clock::duration> limit, std::stop_token stop, Start start)
    : m_clock(clock)
    , m_limit(limit)
    , m_stop(std::move(stop))
    , m_start(std::move(start))
{
}

void GLibCall::await_suspend(std::coroutine_handle<> waiting)
{
    m_state = std::make_shared<State>(m_clock, waiting);
    // Each holder keeps the state until it has nothing more to say, for resuming the flow destroys this object.
    const auto state = m_state;
    if (m_limit)
        state->timer = m_clock.startTimer(*m_limit, [state] { state->end(Ending::timedOut); });
    m_start(state->cancellable.get(), &GLibCall::receive, new std::shared_ptr(state));
    state->onStop.emplace(m_stop, [weak = std::weak_ptr(state)] {
        if (const auto stopped = weak.lock())
            stopped->end(Ending::stopped);
    });
}

GLibCall::Reply GLibCall::await_resume()
{
    if (!m_state)
        return {};
    return {*m_state->ending, std::move(m_state->result)};
}

void GLibCall::receive(GObject*, GAsyncResult* result, gpointer data)
{
    const std::unique_ptr<std::shared_ptr<State>> state(static_cast<std::shared_ptr<State>*>(data));
    (*state)->onStop.reset();
    if ((*state)->ending)
        return;
    (*state)->result.reset(static_cast<GAsyncResult*>(g_object_ref(result)));
    (*state)->end(Ending::answered);
}

} // namespace orvella
