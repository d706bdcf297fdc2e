#pragma once

#include <QFuture>
#include <QPromise>
#include <QThreadPool>

#include <memory>
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
        using Value = decltype(function());
        auto promise = std::make_shared<QPromise<Value>>();
        promise->start();
        m_pool.start([promise, function = std::move(function)] {
            promise->addResult(function());
            promise->finish();
        });
        return promise->future();
    }

private:
    // Its thread ends by itself while there is nothing to do.
    QThreadPool m_pool;
};

} // namespace orvella
