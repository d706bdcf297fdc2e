#pragma once

#include "fleet/Device.h"
#include "fleet/FleetClock.h"
#include "fleet/ModelService.h"

#include <vector>

namespace orvella::fleet {

/// Very many devices and their service, in virtual time. What happens by chance is the same in every run.
class Fleet final {
public:
    /// How long a round trip to the service takes: each device has its own between these, the short ones more often.
    struct RoundTrips {
        std::chrono::milliseconds shortest;
        std::chrono::milliseconds longest;
    };

    Fleet(qint64 devices, RoundTrips roundTrips);
    ~Fleet();

    /// Each device starts at a moment by chance in this part of the time to come, the middle more often where
    /// `shape` says so, and stops likewise.
    enum class Shape { even, bell };
    void startBetween(std::chrono::seconds from, std::chrono::seconds to, Shape shape);
    void stopBetween(std::chrono::seconds from, std::chrono::seconds to, Shape shape);
    void restartAll();

    /// Calls `happens` so long after the beginning.
    void at(std::chrono::seconds when, std::function<void()> happens);
    /// Lets time pass until so long after the beginning.
    void liveUntil(std::chrono::seconds end);

    [[nodiscard]] ModelService& service() { return m_service; }
    [[nodiscard]] const Arrivals& arrivals() const { return m_service.arrivals(); }
    [[nodiscard]] qint64 running() const;

private:
    [[nodiscard]] Clock::duration chosen(std::chrono::seconds from, std::chrono::seconds to, Shape shape);
    void callAt(Clock::duration when, std::function<void()> happens);

    FleetClock m_clock;
    Instant m_start;
    ModelService m_service;
    FakePlatform m_shared;
    simulation::Chance m_chance {2};
    std::vector<std::unique_ptr<Device>> m_devices;
};

} // namespace orvella::fleet
