#include "platform/linux/secrets/SharedWait.h"

#include <utility>

namespace orvella {

struct SharedWait::Waiter {
    std::coroutine_handle<> waiting;
    std::optional<std::stop_callback<std::function<void()>>> onStop;

    void resume()
    {
        if (const auto flow = std::exchange(waiting, nullptr))
            flow.resume();
    }
};

void SharedWait::end()
{
    m_hasEnded = true;
    // A flow that resumes may stop another one, or let go of this object.
    const auto waiters = std::exchange(m_waiters, {});
    for (const auto& waiter : waiters)
        waiter->resume();
}

SharedWait::Wait SharedWait::wait(std::stop_token stop)
{
    return Wait(*this, std::move(stop));
}

SharedWait::Wait::Wait(SharedWait& awaited, std::stop_token stop)
    : m_awaited(awaited)
    , m_stop(std::move(stop))
{
}

void SharedWait::Wait::await_suspend(std::coroutine_handle<> waiting)
{
    const auto waiter = std::make_shared<Waiter>();
    waiter->waiting = waiting;
    m_awaited.m_waiters.push_back(waiter);
    waiter->onStop.emplace(m_stop, [weak = std::weak_ptr(waiter)] {
        if (const auto stopped = weak.lock())
            stopped->resume();
    });
}

} // namespace orvella
