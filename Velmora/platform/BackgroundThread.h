#pragma once

#include <QFuture>
#include <QPromise>
#include <QRunnable>
#include <QThreadPool>

#include <atomic>
#include <memory>
#include <type_traits>
#include <utility>

namespace orvella {

/// A thread for calls that block; it runs them one after the other, in their order. What hangs elsewhere, a request for
/// example, does not hold them up.
class BackgroundThread final {
public:
    BackgroundThread() { m_pool.setMaxThreadCount(1); }

    BackgroundThread(const BackgroundThread&) = delete;
    BackgroundThread& operator=(const BackgroundThread&) = delete;
    /// Waits for all that it was given: a change that has begun is made.
    ~BackgroundThread() = default;

    /// Runs the function; the future, awaited, resumes on the thread that awaits it.
    template <class Function> [[nodiscard]] auto run(Function function)
    {
        auto work = std::make_unique<Work<Function>>(std::move(function));
        auto future = work->future();
        m_pool.start(work.release());
        return future;
    }

private:
    /// What the pool runs and deletes.
    template <class Function> class Work final : public QRunnable {
    public:
        using Value = std::invoke_result_t<Function>;

        explicit Work(Function function)
            : m_function(std::move(function))
        {
            m_promise.start();
            m_isHandedOver.store(true, std::memory_order_release);
        }

        [[nodiscard]] QFuture<Value> future() const { return m_promise.future(); }

        void run() override
        {
            // The pool orders the two threads itself, but the thread sanitizer does not see into it.
            static_cast<void>(m_isHandedOver.load(std::memory_order_acquire));
            m_promise.addResult(m_function());
            m_promise.finish();
        }

    private:
        Function m_function;
        QPromise<Value> m_promise;
        std::atomic<bool> m_isHandedOver = false;
    };

    // Its thread ends by itself while there is nothing to do.
    QThreadPool m_pool;
};

} // namespace orvella
