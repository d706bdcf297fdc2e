#pragma once

#include "simulation/SimulatedNetwork.h"
#include "simulation/ViewerSettings.h"
#include "simulation/World.h"

namespace orvella::simulation {

/// What every request has to keep to itself, and the token that it has to carry.
class RequestRules final {
public:
    RequestRules(const World& world, const ViewerSettings& settings);

    void sent(const SimulatedNetwork::Call& call);

private:
    void checkPrivacy(const SimulatedNetwork::Call& call);
    void checkToken(const SimulatedNetwork::Call& call);

    const World& m_world;
    const ViewerSettings& m_settings;
};

} // namespace orvella::simulation
