#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QCoroTask>
#include <QUrl>

#include <chrono>
#include <memory>
#include <stop_token>
#include <utility>
#include <vector>

namespace orvella {

/// One request to the service.
struct HttpRequest {
    using Header = std::pair<QByteArray, QByteArray>;

    QByteArray method;
    QUrl url;
    /// Names in lower case, as they go out.
    std::vector<Header> headers;
    QByteArray body;
};

/// A whole reply, whatever its status.
struct HttpReply {
    int status = 0;
    QByteArray body;
};

/// One call of the service, as the request layer sees it. Both functions run away from the main thread, one after the
/// other, and touch nothing but the exchange itself.
class Exchange {
public:
    virtual ~Exchange() = default;

    /// Makes the request; a failure here ends the exchange before anything is sent.
    [[nodiscard]] virtual Result<HttpRequest> request() const = 0;
    /// Takes the reply and reads it; or takes the failure, of `request` too.
    virtual void receive(Result<HttpReply> reply) = 0;
};

/// Carries exchanges to the service and back.
class Transport {
public:
    /// No exchange takes longer from the sending of its request to the last byte of the reply.
    static constexpr std::chrono::seconds kLongestExchange {60};

    virtual ~Transport() = default;

    /// Runs the exchange in the background and resumes on the main thread when it is over.
    ///
    /// When `stop` is requested the caller resumes at once and the exchange is dropped: it must not be looked at again.
    virtual QCoro::Task<> run(std::shared_ptr<Exchange> exchange, std::stop_token stop) = 0;
};

} // namespace orvella
