#pragma once

#include "base/Clock.h"

namespace orvella::simulation {

/// The time that a run has had: without that in which the machine was suspended or the program got none.
class RunTime final {
public:
    explicit RunTime(const Clock& clock)
        : m_clock(clock)
    {
    }

    void lose(Clock::duration time) { m_lost += time; }

    [[nodiscard]] Instant now() const { return m_clock.now() - m_lost; }

private:
    const Clock& m_clock;
    Clock::duration m_lost {};
};

} // namespace orvella::simulation
