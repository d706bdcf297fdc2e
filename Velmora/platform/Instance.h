#pragma once

#include <functional>

namespace orvella {

/// The one program that runs for a viewer's session and profile.
class Instance {
public:
    virtual ~Instance() = default;

    /// True where this is the first. Otherwise the running one is told that it was started again, and this one has
    /// nothing left to do.
    [[nodiscard]] virtual bool claim() = 0;

    /// Calls `reopened` each time the program is started again.
    virtual void watch(std::function<void()> reopened) = 0;
};

} // namespace orvella
