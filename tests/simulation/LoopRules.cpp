#include "simulation/LoopRules.h"

#include "simulation/SimulatedKeyring.h"
#include "simulation/SimulatedNetwork.h"

#include <algorithm>

namespace orvella::simulation {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kShortestPauseSeconds = 60;
constexpr qint64 kLongestPauseSeconds = 900;
/// What the loop takes beyond its pause at most, where nothing holds it up: the wait for the network, and one tick.
constexpr auto kSlack = 11s;

} // namespace

LoopRules::LoopRules(const World& world, const AppState& state, const RunTime& time)
    : m_world(world)
    , m_state(state)
    , m_time(time)
    , m_lastCycle(world.clock.now())
    , m_lastSign(time.now())
{
}

void LoopRules::heartbeatSent()
{
    // The first heartbeat is that of the start.
    if (++m_heartbeats == 1)
        return;
    m_world.expect(m_pollsInFlight == 0, u"A heartbeat is sent while a poll is under way."_s);
    const bool isFirst = !std::exchange(m_isPolling, true);
    m_world.expect(isFirst || m_world.clock.now() - m_lastCycle >= std::chrono::seconds(m_pauseSeconds),
        u"The service is asked earlier than it wants to be."_s);
    m_lastCycle = m_world.clock.now();
    givesSign();
}

void LoopRules::pollSent()
{
    m_world.expect(++m_pollsInFlight == 1 && m_isPolling, u"Two poll loops run."_s);
}

void LoopRules::pollAnswered()
{
    --m_pollsInFlight;
    m_lastCycle = m_world.clock.now();
    givesSign();
}

void LoopRules::givesSign()
{
    m_lastSign = m_time.now();
}

void LoopRules::wantsPause(qint64 seconds)
{
    m_pauseSeconds = std::clamp(seconds, kShortestPauseSeconds, kLongestPauseSeconds);
}

void LoopRules::check() const
{
    // Before that it may be known and wait for the token to be stored.
    m_world.expect(!m_hasStarted || m_state.pollSeconds() == m_pauseSeconds,
        u"The pause between two polls is not what the service wants."_s);
    if (!m_hasStarted || !isQuiet())
        return;
    m_world.expect(m_isPolling, u"No poll loop runs after the start."_s);
    m_world.expect(
        m_time.now() - m_lastSign <= std::chrono::seconds(m_pauseSeconds) + kSlack, u"The poll loop has stopped."_s);
}

/// Nothing is under way for which the loop might wait.
bool LoopRules::isQuiet() const
{
    return m_world.network.waiting() == 0 && m_world.keyring.waiting() == 0;
}

} // namespace orvella::simulation
