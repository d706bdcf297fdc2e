#pragma once

#include "base/Clock.h"
#include "simulation/Journal.h"

namespace orvella::simulation {

class ProgramClock;
class SimulatedDesktop;
class SimulatedKeyring;
class SimulatedNetwork;
class SimulatedService;

/// What a run of the program has around it, for whoever watches it.
struct World {
    const Clock& clock;
    Journal& journal;
    SimulatedNetwork& network;
    const SimulatedService& service;
    const SimulatedKeyring& keyring;
    const SimulatedDesktop& desktop;
    const ProgramClock& programClock;

    /// Ends the simulation where the rule does not hold.
    void expect(bool holds, const QString& rule) const
    {
        if (!holds)
            journal.broken(rule);
    }
};

} // namespace orvella::simulation
