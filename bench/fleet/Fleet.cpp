#include "fleet/Fleet.h"

#include <algorithm>
#include <cmath>

namespace orvella::fleet {

namespace {

using Milliseconds = std::chrono::milliseconds;

/// Evenly spread over the logarithm.
Clock::duration chosenRoundTrip(Fleet::RoundTrips bounds, simulation::Chance& chance)
{
    if (bounds.longest <= bounds.shortest)
        return bounds.shortest;
    constexpr qint64 kSteps = 1'000'000;
    const auto part = static_cast<double>(chance.below(kSteps)) / static_cast<double>(kSteps);
    const auto ratio = static_cast<double>(bounds.longest.count()) / static_cast<double>(bounds.shortest.count());
    const auto nanoseconds = std::chrono::duration<double, std::nano>(bounds.shortest) * std::pow(ratio, part);
    return std::chrono::round<Clock::duration>(nanoseconds);
}

} // namespace

Fleet::Fleet(qint64 devices, RoundTrips roundTrips)
    : m_start(m_clock.now())
    , m_service(m_clock)
{
    m_shared.loginItem.current = LoginItem::Status::enabled;
    m_devices.reserve(static_cast<std::size_t>(devices));
    for (qint64 number = 1; number <= devices; ++number) {
        const auto roundTrip = chosenRoundTrip(roundTrips, m_chance);
        m_devices.push_back(
            std::make_unique<Device>(Device::Surroundings {m_clock, m_service, m_shared}, number, roundTrip));
    }
}

Fleet::~Fleet() = default;

void Fleet::startBetween(std::chrono::seconds from, std::chrono::seconds to, Shape shape)
{
    for (const auto& device : m_devices)
        callAt(chosen(from, to, shape), [&device = *device] { device.start(); });
}

void Fleet::stopBetween(std::chrono::seconds from, std::chrono::seconds to, Shape shape)
{
    for (const auto& device : m_devices)
        callAt(chosen(from, to, shape), [&device = *device] { device.stop(); });
}

void Fleet::restartAll()
{
    for (const auto& device : m_devices)
        device->start();
}

void Fleet::at(std::chrono::seconds when, std::function<void()> happens)
{
    callAt(when, std::move(happens));
}

void Fleet::callAt(Clock::duration when, std::function<void()> happens)
{
    m_clock.startTimer(m_start + when - m_clock.now(), std::move(happens));
}

void Fleet::liveUntil(std::chrono::seconds end)
{
    m_clock.advanceTo(m_start + end);
}

qint64 Fleet::running() const
{
    return std::ranges::count_if(m_devices, &Device::isRunning);
}

Clock::duration Fleet::chosen(std::chrono::seconds from, std::chrono::seconds to, Shape shape)
{
    const auto once = [&] { return m_chance.between(Milliseconds(from), Milliseconds(to)); };
    // The sum of two is what two dice show.
    return shape == Shape::even ? once() : (once() + once()) / 2;
}

} // namespace orvella::fleet
