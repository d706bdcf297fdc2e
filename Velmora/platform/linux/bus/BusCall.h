#pragma once

#include "base/Clock.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <coroutine>
#include <memory>
#include <optional>
#include <stop_token>

namespace orvella {

/// One call over D-Bus, awaited in a coroutine.
///
/// It ends with the answer, when the limit is over or when a stop is requested, whichever comes first and exactly once.
/// In the two latter cases the waiting flow resumes at once; what the service still says is dropped.
class [[nodiscard]] BusCall final {
public:
    enum class Ending { answered, timedOut, stopped };

    struct Reply {
        Ending ending = Ending::stopped;
        /// The answer or the error; nothing of either unless answered.
        QDBusMessage message;
    };

    BusCall(Clock& clock, Clock::duration limit, QDBusConnection bus, QDBusMessage call, std::stop_token stop);

    [[nodiscard]] bool await_ready() const noexcept { return m_stop.stop_requested(); }

    /// Does not wait where there is no bus.
    bool await_suspend(std::coroutine_handle<> waiting);
    [[nodiscard]] Reply await_resume();

private:
    struct State;

    Clock& m_clock;
    Clock::duration m_limit;
    QDBusConnection m_bus;
    QDBusMessage m_call;
    std::stop_token m_stop;
    Reply m_reply;
    std::shared_ptr<State> m_state;
};

} // namespace orvella
