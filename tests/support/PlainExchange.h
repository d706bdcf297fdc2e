#pragma once

#include "api/Transport.h"

#include <QThread>

#include <atomic>
#include <optional>

namespace orvella {

/// An exchange that sends what it is given and keeps the reply as it is.
class PlainExchange final : public Exchange {
public:
    explicit PlainExchange(Result<HttpRequest> request)
        : m_request(std::move(request))
    {
    }

    [[nodiscard]] Result<HttpRequest> request() const override
    {
        m_requestThread = QThread::currentThread();
        return m_request;
    }

    void receive(Result<HttpReply> reply) override
    {
        m_receiveThread = QThread::currentThread();
        m_reply = std::move(reply);
        ++m_receipts;
    }

    /// Once the flow has resumed and was not stopped.
    [[nodiscard]] const std::optional<Result<HttpReply>>& reply() const { return m_reply; }

    // These may be asked at any time.
    [[nodiscard]] const QThread* requestThread() const { return m_requestThread; }

    [[nodiscard]] const QThread* receiveThread() const { return m_receiveThread; }

    [[nodiscard]] int receipts() const { return m_receipts; }

private:
    Result<HttpRequest> m_request;
    mutable std::atomic<const QThread*> m_requestThread = nullptr;
    std::atomic<const QThread*> m_receiveThread = nullptr;
    std::optional<Result<HttpReply>> m_reply;
    std::atomic<int> m_receipts = 0;
};

} // namespace orvella
