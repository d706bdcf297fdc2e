#pragma once

#include "fleet/Arrivals.h"

#include <functional>

namespace orvella::fleet {

/// Some hours of a fleet, and the parts of them that are told.
struct Scenario {
    struct Part {
        QString name;
        std::chrono::seconds from;
        std::chrono::seconds to;
    };

    /// Short, for a file.
    QString name;
    QString description;
    std::vector<Part> parts;
    /// When the fleet is disturbed; the part before is the calm that it comes back to.
    std::optional<std::chrono::seconds> disturbed;
    /// Lets a fleet of so many devices live.
    std::function<Arrivals(qint64 devices)> live;
};

/// Everything that is tried, each for this time: at least three hours.
[[nodiscard]] std::vector<Scenario> everyScenario(std::chrono::hours time);

} // namespace orvella::fleet
