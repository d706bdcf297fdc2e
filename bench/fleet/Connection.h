#pragma once

#include "api/Transport.h"
#include "base/Clock.h"
#include "simulation/Chance.h"

namespace orvella::fleet {

class ModelService;

/// One device's way to the service. Every request has a connection of its own, as the program's have: the way there is
/// two and a half round trips (TCP, TLS 1.3, the request), the way back the other half.
class Connection final : public Transport {
public:
    /// The time in which the program gives a request up.
    static constexpr auto kLimit = std::chrono::seconds(60);

    Connection(Clock& clock, ModelService& service, Clock::duration roundTrip, quint64 seed);

    QCoro::Task<> run(std::shared_ptr<Exchange> exchange, std::stop_token stop) override;

private:
    /// No two requests take the same time.
    [[nodiscard]] Clock::duration nextRoundTrip();
    /// Waits for an answer, and whether it came.
    QCoro::Task<bool> isAnswered(Clock::duration patience, std::stop_token stop);

    Clock& m_clock;
    ModelService& m_service;
    Clock::duration m_roundTrip;
    simulation::Chance m_chance;
};

} // namespace orvella::fleet
