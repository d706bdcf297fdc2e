#include "fleet/FleetClock.h"

#include <QCoreApplication>

namespace orvella::fleet {

Clock::TimerId FleetClock::startTimer(duration pause, std::function<void()> elapsed)
{
    m_due.push({m_now + pause, ++m_lastId});
    m_elapsed.emplace(m_lastId, std::move(elapsed));
    return TimerId {m_lastId};
}

Clock::TimerId FleetClock::startAlarm(duration pause, std::function<void()> elapsed)
{
    return startTimer(pause, std::move(elapsed));
}

void FleetClock::stopTimer(TimerId timer)
{
    m_elapsed.erase(static_cast<qint64>(timer));
}

void FleetClock::advanceTo(time_point end)
{
    QCoreApplication::sendPostedEvents();
    while (!m_due.empty() && m_due.top().at <= end) {
        const auto due = m_due.top();
        m_due.pop();
        const auto elapsed = m_elapsed.extract(due.order);
        if (!elapsed)
            continue;
        m_now = due.at;
        elapsed.mapped()();
        QCoreApplication::sendPostedEvents();
    }
    m_now = end;
}

} // namespace orvella::fleet
