#include "simulation/ProgramClock.h"

namespace orvella::simulation {

ProgramClock::ProgramClock(Clock& world)
    : m_world(world)
{
}

Clock::TimerId ProgramClock::startTimer(duration pause, std::function<void()> elapsed)
{
    return start(&Clock::startTimer, pause, std::move(elapsed));
}

Clock::TimerId ProgramClock::startAlarm(duration pause, std::function<void()> elapsed)
{
    return start(&Clock::startAlarm, pause, std::move(elapsed));
}

void ProgramClock::stopTimer(TimerId timer)
{
    m_running.erase(timer);
    m_world.stopTimer(timer);
}

Clock::TimerId ProgramClock::start(Start how, duration pause, std::function<void()> elapsed)
{
    const auto own = std::make_shared<TimerId>();
    *own = (m_world.*how)(pause, [this, own, elapsed = std::move(elapsed)] {
        m_running.erase(*own);
        elapsed();
    });
    m_running.insert(*own);
    return *own;
}

} // namespace orvella::simulation
