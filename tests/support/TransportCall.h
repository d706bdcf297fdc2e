#pragma once

#include "api/CurlOptions.h"
#include "support/PlainExchange.h"

#include <QThread>

#include <memory>
#include <stop_token>

namespace orvella {

/// A flow that runs one exchange over a transport and notes where it is.
class TransportCall final {
public:
    TransportCall(Transport& transport, Result<HttpRequest> request);
    /// Stops the flow.
    ~TransportCall();

    void stop() { m_stop.request_stop(); }

    [[nodiscard]] bool isOver() const { return m_progress->resumptions > 0; }

    [[nodiscard]] int resumptions() const { return m_progress->resumptions; }

    /// The thread in which the flow resumed.
    [[nodiscard]] const QThread* thread() const { return m_progress->thread; }

    [[nodiscard]] const PlainExchange& exchange() const { return *m_exchange; }

    /// Keeps the main loop going until the flow is over and answers what came of it. A call that hangs ends the test.
    [[nodiscard]] Result<HttpReply> wait();

private:
    struct Progress {
        int resumptions = 0;
        const QThread* thread = nullptr;
    };

    static QCoro::Task<> run(Transport& transport, std::shared_ptr<Exchange> exchange, std::stop_token stop,
        std::shared_ptr<Progress> progress);

    std::shared_ptr<PlainExchange> m_exchange;
    std::shared_ptr<Progress> m_progress = std::make_shared<Progress>();
    std::stop_source m_stop;
};

/// Runs one exchange over a transport of its own, to its end.
[[nodiscard]] Result<HttpReply> ask(HttpRequest request, CurlOptions options = {});

/// A GET of `url`.
[[nodiscard]] HttpRequest aGet(const QUrl& url);
/// A POST of JSON to `url`.
[[nodiscard]] HttpRequest aPost(const QUrl& url, const QByteArray& body = "{}");

/// For QCOMPARE.
[[nodiscard]] char* toString(const Failure& failure);

} // namespace orvella
