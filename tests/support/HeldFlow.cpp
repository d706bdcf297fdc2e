#include "support/HeldFlow.h"

#include <utility>

namespace orvella {

HeldFlow::Wait::Wait(HeldFlow& held, std::stop_token stop)
    : m_held(held)
    , m_stop(std::move(stop))
{
}

void HeldFlow::Wait::await_suspend(std::coroutine_handle<> flow)
{
    m_held.m_flow = flow;
    m_held.m_onStop.emplace(m_stop, [held = &m_held] { std::exchange(held->m_flow, {}).resume(); });
}

void HeldFlow::resume()
{
    m_onStop.reset();
    if (m_flow)
        std::exchange(m_flow, {}).resume();
}

} // namespace orvella
