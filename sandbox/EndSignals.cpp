#include "sandbox/EndSignals.h"

#include <pthread.h>

namespace orvella::sandbox {

EndSignals::EndSignals()
{
    sigemptyset(&m_signals);
    sigaddset(&m_signals, SIGTERM);
    sigaddset(&m_signals, SIGINT);
    pthread_sigmask(SIG_BLOCK, &m_signals, nullptr);
}

EndSignals::~EndSignals()
{
    if (!m_waiting.joinable())
        return;
    // Wakes the thread where no signal has come; where one has, it is blocked and comes to nothing.
    pthread_kill(m_waiting.native_handle(), SIGTERM);
    m_waiting.join();
}

void EndSignals::wait(std::function<void()> received)
{
    m_waiting = std::thread([awaited = m_signals, received = std::move(received)] {
        int signal = 0;
        sigwait(&awaited, &signal);
        received();
    });
}

} // namespace orvella::sandbox
