#pragma once

#include "base/Clock.h"
#include "platform/linux/GLibPointers.h"

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>

namespace orvella {

/// One asynchronous call of a GLib library, awaited in a coroutine.
///
/// It ends with the answer, when the limit is over or when a stop is requested, whichever comes first and exactly once.
/// In the two latter cases the call is cancelled and the waiting flow resumes at once; what GLib still says is dropped.
///
/// Answers come through GLib's main loop: the thread must run Qt's GLib event dispatcher, which is Qt's choice on Linux
/// unless QT_NO_GLIB is set. Without it every call ends by its limit.
class [[nodiscard]] GLibCall final {
public:
    /// Starts the call, handing over its cancellable, its callback and the callback's data as they are.
    using Start = std::function<void(GCancellable*, GAsyncReadyCallback, gpointer)>;

    enum class Ending { answered, timedOut, stopped };

    struct Reply {
        Ending ending = Ending::stopped;
        /// For the `_finish` function of the call; null unless answered.
        GLibPointer<GAsyncResult> result;
    };

    /// No limit means that the call may take as long as it likes.
    GLibCall(Clock& clock, std::optional<Clock::duration> limit, std::stop_token stop, Start start);

    [[nodiscard]] bool await_ready() const noexcept { return m_stop.stop_requested(); }

    void await_suspend(std::coroutine_handle<> waiting);
    [[nodiscard]] Reply await_resume();

private:
    struct State;

    static void receive(GObject* source, GAsyncResult* result, gpointer data);

    Clock& m_clock;
    std::optional<Clock::duration> m_limit;
    std::stop_token m_stop;
    Start m_start;
    std::shared_ptr<State> m_state;
};

} // namespace orvella
