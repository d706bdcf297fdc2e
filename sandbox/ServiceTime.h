#pragma once

#include "base/Clock.h"

#include <QString>

#include <chrono>

namespace orvella::sandbox {

/// A date of the service: milliseconds since 1970 in UTC.
using Moment = std::chrono::sys_time<std::chrono::milliseconds>;

/// The service's own time. It starts at a date and then follows the clock, so that it never jumps while a session runs
/// and is still comparable with the dates that an earlier run has stored.
class ServiceTime final {
public:
    ServiceTime(const Clock& clock, Moment start);

    [[nodiscard]] Moment now() const;

private:
    const Clock& m_clock;
    Instant m_startInstant;
    Moment m_start;
};

/// ISO 8601 in UTC with milliseconds: "2026-05-01T12:00:15.250Z".
[[nodiscard]] QString isoText(Moment moment);

/// For a reader: "2026-05-01 12:00 UTC".
[[nodiscard]] QString readableText(Moment moment);

} // namespace orvella::sandbox
