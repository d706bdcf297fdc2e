#pragma once

#include <QFuture>
#include <QPromise>
#include <QThreadPool>

#include <memory>
#include <utility>

namespace orvella {

/// Runs the function on the shared background threads; the future, awaited, resumes on the thread that awaits it.
template <class Function> [[nodiscard]] auto inBackground(Function function)
{
    using Value = decltype(function());
    auto promise = std::make_shared<QPromise<Value>>();
    promise->start();
    QThreadPool::globalInstance()->start([promise, function = std::move(function)] {
        promise->addResult(function());
        promise->finish();
    });
    return promise->future();
}

} // namespace orvella
