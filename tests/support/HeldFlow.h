#pragma once

#include <coroutine>
#include <functional>
#include <optional>
#include <stop_token>
#include <utility>

namespace orvella {

/// A flow that waits until somebody resumes it or it is stopped:
///
///     co_await heldFlow->resumedOrStopped(stop);
class HeldFlow final {
public:
    /// What the flow awaits. It does not suspend a flow that is stopped already.
    class Wait final {
    public:
        [[nodiscard]] bool await_ready() const noexcept { return m_stop.stop_requested(); }

        void await_suspend(std::coroutine_handle<> flow);

        void await_resume() const noexcept {}

    private:
        friend class HeldFlow;
        Wait(HeldFlow& held, std::stop_token stop);

        HeldFlow& m_held;
        std::stop_token m_stop;
    };

    HeldFlow() = default;
    HeldFlow(const HeldFlow&) = delete;
    HeldFlow& operator=(const HeldFlow&) = delete;

    /// Whether a flow waits here.
    [[nodiscard]] bool isWaiting() const { return static_cast<bool>(m_flow); }

    /// This has to outlive the wait.
    [[nodiscard]] Wait resumedOrStopped(std::stop_token stop) { return {*this, std::move(stop)}; }

    /// Does nothing where no flow waits.
    void resume();

private:
    std::coroutine_handle<> m_flow;
    std::optional<std::stop_callback<std::function<void()>>> m_onStop;
};

} // namespace orvella
