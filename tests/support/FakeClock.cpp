#include "support/FakeClock.h"

#include <QCoreApplication>
#include <QEvent>

#include <algorithm>

namespace orvella {

Clock::TimerId FakeClock::startTimer(duration pause, std::function<void()> elapsed)
{
    return start(pause, {Counts::awakeTime, std::move(elapsed)});
}

Clock::TimerId FakeClock::startAlarm(duration pause, std::function<void()> elapsed)
{
    return start(pause, {Counts::allTime, std::move(elapsed)});
}

Clock::TimerId FakeClock::start(duration pause, Timer timer)
{
    m_timers.emplace(Due {m_now + pause, ++m_lastId}, std::move(timer));
    return TimerId {m_lastId};
}

void FakeClock::stopTimer(TimerId timer)
{
    std::erase_if(m_timers, [timer](const auto& entry) { return TimerId {entry.first.order} == timer; });
}

void FakeClock::advance(duration pause)
{
    settle();
    const auto end = m_now + pause;
    while (!m_timers.empty() && m_timers.begin()->first.at <= end) {
        elapseNext();
        settle();
    }
    m_now = end;
}

bool FakeClock::elapseNext()
{
    if (m_timers.empty())
        return false;
    const auto due = m_timers.extract(m_timers.begin());
    m_now = std::max(m_now, due.key().at);
    due.mapped().elapsed();
    return true;
}

void FakeClock::suspend(duration pause)
{
    settle();
    standStill(pause);
    advance(duration::zero());
}

void FakeClock::standStill(duration pause)
{
    std::map<Due, Timer> timers;
    for (auto& [due, timer] : m_timers) {
        const auto standstill = timer.counts == Counts::awakeTime ? pause : duration::zero();
        timers.emplace(Due {due.at + standstill, due.order}, std::move(timer));
    }
    m_timers = std::move(timers);
    m_now += pause;
    m_suspended += pause;
}

void settle()
{
    // Posted work may post more. Nothing tells whether anything is left, but no chain of it is nearly as long.
    constexpr int kRounds = 100;
    for (int round = 0; round < kRounds; ++round) {
        QCoreApplication::sendPostedEvents();
        QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
    }
}

} // namespace orvella
