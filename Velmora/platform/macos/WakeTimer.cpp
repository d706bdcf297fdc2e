#include "base/WakeTimer.h"

#include <algorithm>
#include <cstdint>
#include <ctime>
#include <fcntl.h>
#include <sys/event.h>
#include <unistd.h>

namespace orvella {

namespace {

constexpr uintptr_t kTimer = 1;

void change(int queue, unsigned short flags, unsigned int units, std::int64_t pause)
{
    struct kevent event = {};
    EV_SET(&event, kTimer, EVFILT_TIMER, flags, units, pause, nullptr);
    // A timer that is to be deleted may have elapsed and gone.
    kevent(queue, &event, 1, nullptr, 0, nullptr);
}

} // namespace

// The kernel's queue has a timer whose clock runs on while the machine is asleep (kqueue(2)), and the queue itself is a
// descriptor that the main loop can watch.
WakeTimer::WakeTimer(std::function<void()> elapsed)
    : m_descriptor(kqueue())
{
    if (m_descriptor < 0)
        qFatal("There is no timer left for what happens after a suspension.");
    fcntl(m_descriptor, F_SETFD, FD_CLOEXEC);
    m_notifier = std::make_unique<QSocketNotifier>(m_descriptor, QSocketNotifier::Read);
    QObject::connect(m_notifier.get(), &QSocketNotifier::activated, m_notifier.get(),
        [descriptor = m_descriptor, elapsed = std::move(elapsed)] {
            // Nothing is there where it was set anew in the meantime.
            struct kevent event = {};
            const timespec atOnce {};
            if (kevent(descriptor, nullptr, 0, &event, 1, &atOnce) == 1)
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
    const auto wait = std::max(pause, std::chrono::nanoseconds(1));
    change(m_descriptor, EV_ADD | EV_ONESHOT, NOTE_NSECONDS | NOTE_MACH_CONTINUOUS_TIME, wait.count());
}

void WakeTimer::clear()
{
    change(m_descriptor, EV_DELETE, 0, 0);
}

} // namespace orvella
