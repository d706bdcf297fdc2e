#pragma once

#include <csignal>
#include <functional>
#include <thread>

namespace orvella::sandbox {

/// Turns SIGTERM and SIGINT into a call, once. Make it before any other thread starts: they inherit that the signals
/// are not delivered to them.
class EndSignals final {
public:
    EndSignals();
    EndSignals(const EndSignals&) = delete;
    EndSignals& operator=(const EndSignals&) = delete;
    ~EndSignals();

    /// `received` is called on a thread of its own.
    void wait(std::function<void()> received);

private:
    sigset_t m_signals {};
    std::thread m_waiting;
};

} // namespace orvella::sandbox
