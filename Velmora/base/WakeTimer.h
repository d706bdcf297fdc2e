#pragma once

#include <QSocketNotifier>

#include <chrono>
#include <functional>
#include <memory>

namespace orvella {

/// A timer that also counts the time in which the machine is suspended. What became due in between elapses when the
/// machine wakes; it is not woken for it.
class WakeTimer final {
public:
    /// `elapsed` is called from the main loop.
    explicit WakeTimer(std::function<void()> elapsed);
    WakeTimer(const WakeTimer&) = delete;
    WakeTimer& operator=(const WakeTimer&) = delete;
    ~WakeTimer();

    /// Elapses once, so much time from now, instead of what was set before.
    void set(std::chrono::nanoseconds pause);
    void clear();

private:
    int m_descriptor;
    std::unique_ptr<QSocketNotifier> m_notifier;
};

} // namespace orvella
