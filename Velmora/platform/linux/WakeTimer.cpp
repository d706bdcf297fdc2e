#include "base/WakeTimer.h"

#include <QtGlobal>

#include <algorithm>
#include <cstdint>
#include <sys/timerfd.h>
#include <unistd.h>

namespace orvella {

// The kernel itself looks at the timers of this clock when the machine wakes (timerfd_create(2)), so nobody has to be
// asked whether it was asleep.
WakeTimer::WakeTimer(std::function<void()> elapsed)
    : m_descriptor(timerfd_create(CLOCK_BOOTTIME, TFD_NONBLOCK | TFD_CLOEXEC))
{
    if (m_descriptor < 0)
        qFatal("There is no timer left for what happens after a suspension.");
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
        [descriptor = m_descriptor, elapsed = std::move(elapsed)] {
            // It reads as elapsed until it is read. Nothing is there where it was set anew in the meantime.
            std::uint64_t times = 0;
            if (read(descriptor, &times, sizeof times) == sizeof times)
                elapsed();
        });
}

WakeTimer::~WakeTimer()
{
    m_notifier.reset();
    close(m_descriptor);
}

void WakeTimer::set(std::chrono::nanoseconds pause)
{
    // A time of zero would turn it off.
    const auto wait = std::max(pause, std::chrono::nanoseconds(1));
    const auto seconds = std::chrono::floor<std::chrono::seconds>(wait);
    itimerspec spec {};
    spec.it_value.tv_sec = seconds.count();
    spec.it_value.tv_nsec = (wait - seconds).count();
    timerfd_settime(m_descriptor, 0, &spec, nullptr);
}

void WakeTimer::clear()
{
    const itimerspec never {};
    timerfd_settime(m_descriptor, 0, &never, nullptr);
}

} // namespace orvella
