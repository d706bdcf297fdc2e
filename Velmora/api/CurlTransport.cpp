#include "api/CurlTransport.h"

#include "api/CurlTransfer.h"

#include <QRunnable>
#include <QThread>
#include <QThreadPool>

#include <algorithm>
#include <atomic>
#include <condition_variable>
#include <deque>
#include <mutex>

namespace orvella {

namespace {

// So many hung calls leave the next one waiting; the flows of the program never have as many under way.
constexpr int kThreads = 16;

// The next calls are minutes away: a worker that waits for them is not at rest.
constexpr auto kIdleThread = std::chrono::seconds(2);

} // namespace

/// One exchange and its request. A worker runs it; the main thread may abort it meanwhile.
class CurlTransport::Call final {
public:
    Call(std::shared_ptr<Exchange> exchange, const CurlOptions& options)
        : m_exchange(std::move(exchange))
        , m_transfer(options)
    {
    }

    void run()
    {
        if (m_transfer.isAborted())
            return;
        const auto request = m_exchange->request();
        auto reply = request ? m_transfer.perform(*request) : std::unexpected(request.error());
        if (!m_transfer.isAborted())
            receive(std::move(reply));
    }

    void abort() { m_transfer.abort(); }

    /// For the main thread, when no worker is left.
    void cancelUnlessReceived()
    {
        if (!m_hasReceived)
            receive(failed(Failure::Kind::cancelled));
    }

private:
    void receive(Result<HttpReply> reply)
    {
        m_hasReceived = true;
        m_exchange->receive(std::move(reply));
    }

    std::shared_ptr<Exchange> m_exchange;
    CurlTransfer m_transfer;
    bool m_hasReceived = false;
};

/// Where workers sign in, leave what they have finished and sign out. It outlives the transport for those who come
/// late.
class CurlTransport::Desk final {
public:
    /// From a worker: false when the transport is gone or going. Until `leave` the transport stays.
    [[nodiscard]] bool enter()
    {
        const std::lock_guard lock(m_mutex);
        if (m_isClosed)
            return false;
        ++m_workers;
        return true;
    }

    void put(std::shared_ptr<Call> call)
    {
        const std::lock_guard lock(m_mutex);
        m_ended.push_back(std::move(call));
    }

    void leave()
    {
        const std::lock_guard lock(m_mutex);
        --m_workers;
        m_oneLeft.notify_all();
    }

    [[nodiscard]] std::shared_ptr<Call> take()
    {
        const std::lock_guard lock(m_mutex);
        auto call = std::move(m_ended.front());
        m_ended.pop_front();
        return call;
    }

    void close()
    {
        const std::lock_guard lock(m_mutex);
        m_isClosed = true;
    }

    void waitUntilEmpty()
    {
        std::unique_lock lock(m_mutex);
        m_oneLeft.wait(lock, [this] { return m_workers == 0; });
    }

private:
    std::mutex m_mutex;
    std::condition_variable m_oneLeft;
    std::deque<std::shared_ptr<Call>> m_ended;
    int m_workers = 0;
    bool m_isClosed = false;
};

/// What the pool runs.
class CurlTransport::Worker final : public QRunnable {
public:
    Worker(CurlTransport& transport, std::shared_ptr<Call> call)
        : m_transport(transport)
        , m_desk(transport.m_desk)
        , m_call(std::move(call))
    {
        m_isHandedOver.store(true, std::memory_order_release);
    }

    void run() override
    {
        // The pool orders the two threads itself, but the thread sanitizer does not see into it.
        static_cast<void>(m_isHandedOver.load(std::memory_order_acquire));
        if (!m_desk->enter())
            return;
        m_call->run();
        m_desk->put(std::move(m_call));
        Q_EMIT m_transport.callEnded(QPrivateSignal());
        m_desk->leave();
    }

private:
    CurlTransport& m_transport;
    std::shared_ptr<Desk> m_desk;
    std::shared_ptr<Call> m_call;
    std::atomic<bool> m_isHandedOver = false;
};

/// The wait for the end of a call.
class CurlTransport::Answer final {
public:
    Answer(CurlTransport& transport, std::shared_ptr<Call> call, std::stop_token stop)
        : m_transport(transport)
        , m_call(std::move(call))
        , m_stop(std::move(stop))
    {
    }

    [[nodiscard]] bool await_ready() const noexcept { return false; }

    void await_suspend(std::coroutine_handle<> flow) { m_transport.start(m_call, m_stop, flow); }

    void await_resume() const noexcept {}

private:
    CurlTransport& m_transport;
    std::shared_ptr<Call> m_call;
    std::stop_token m_stop;
};

CurlTransport::CurlTransport(CurlOptions options)
    : m_options(std::move(options))
    , m_desk(std::make_shared<Desk>())
{
    auto* const pool = QThreadPool::globalInstance();
    pool->setMaxThreadCount(std::max(pool->maxThreadCount(), kThreads));
    pool->setExpiryTimeout(static_cast<int>(std::chrono::milliseconds(kIdleThread).count()));
    connect(this, &CurlTransport::callEnded, this, &CurlTransport::deliver, Qt::QueuedConnection);
}

CurlTransport::~CurlTransport()
{
    m_desk->close();
    for (const auto& [call, waiting] : m_waiting)
        waiting.call->abort();
    m_desk->waitUntilEmpty();

    // A flow that resumes may stop others, or ask for more, which no worker takes up any longer.
    while (!m_waiting.empty()) {
        const auto call = m_waiting.begin()->second.call;
        call->cancelUnlessReceived();
        resume(call.get());
    }
}

QCoro::Task<> CurlTransport::run(std::shared_ptr<Exchange> exchange, std::stop_token stop)
{
    Q_ASSERT(QThread::currentThread() == thread());
    if (stop.stop_requested())
        co_return;
    const auto call = std::make_shared<Call>(std::move(exchange), m_options);
    co_await Answer(*this, call, stop);
}

void CurlTransport::start(std::shared_ptr<Call> call, std::stop_token stop, std::coroutine_handle<> flow)
{
    auto* const key = call.get();
    QThreadPool::globalInstance()->start(new Worker(*this, call));
    auto& waiting = m_waiting[key];
    waiting.call = std::move(call);
    waiting.flow = flow;
    waiting.onStop.emplace(std::move(stop), [this, key] { this->stop(key); });
}

void CurlTransport::stop(Call* call)
{
    call->abort();
    resume(call);
}

void CurlTransport::deliver()
{
    const auto call = m_desk->take();
    resume(call.get());
}

void CurlTransport::resume(const Call* call)
{
    // A stopped flow waits no more, and its call ends all the same.
    const auto waiting = m_waiting.find(call);
    if (waiting == m_waiting.end())
        return;
    const auto flow = waiting->second.flow;
    m_waiting.erase(waiting);
    // The flow may destroy the transport: nothing of it is touched after this.
    flow.resume();
}

} // namespace orvella
