#pragma once

#include <coroutine>
#include <functional>
#include <memory>
#include <optional>
#include <stop_token>
#include <vector>

namespace orvella {

/// Something that happens once and that any number of flows wait for.
class SharedWait final {
public:
    class Wait;

    SharedWait() = default;
    SharedWait(const SharedWait&) = delete;
    SharedWait& operator=(const SharedWait&) = delete;

    /// It has happened: resumes everyone who waits, one after the other.
    void end();

    /// Waits in a coroutine. Ends early when `stop` is requested: ask the token afterwards.
    [[nodiscard]] Wait wait(std::stop_token stop);

private:
    struct Waiter;

    bool m_hasEnded = false;
    std::vector<std::shared_ptr<Waiter>> m_waiters;
};

/// The wait of `SharedWait::wait`.
class [[nodiscard]] SharedWait::Wait final {
public:
    Wait(SharedWait& awaited, std::stop_token stop);

    [[nodiscard]] bool await_ready() const noexcept { return m_awaited.m_hasEnded || m_stop.stop_requested(); }

    void await_suspend(std::coroutine_handle<> waiting);

    void await_resume() const noexcept {}

private:
    SharedWait& m_awaited;
    std::stop_token m_stop;
};

} // namespace orvella
