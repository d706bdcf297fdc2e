#pragma once

#include "core/AppState.h"
#include "simulation/RunTime.h"
#include "simulation/World.h"

namespace orvella::simulation {

/// One poll loop, at the pace that the service wants, that does not stop.
class LoopRules final {
public:
    LoopRules(const World& world, const AppState& state, const RunTime& time);

    // What has happened.
    void heartbeatSent();
    void heartbeatAnswered() { m_hasStarted = true; }
    void pollSent();
    void pollAnswered();
    /// Something came that the loop may have waited for.
    void givesSign();
    /// The service wants such a pause.
    void wantsPause(qint64 seconds);

    /// Whether the start is over.
    [[nodiscard]] bool hasStarted() const { return m_hasStarted; }

    void check() const;

private:
    [[nodiscard]] bool isQuiet() const;

    const World& m_world;
    const AppState& m_state;
    const RunTime& m_time;
    qint64 m_pauseSeconds = 300;
    int m_heartbeats = 0;
    int m_pollsInFlight = 0;
    bool m_hasStarted = false;
    bool m_isPolling = false;
    Instant m_lastCycle;
    /// When the loop last had something to do.
    Instant m_lastSign;
};

} // namespace orvella::simulation
