#pragma once

#include "api/Records.h"
#include "api/Transport.h"

#include <QString>

namespace orvella {

/// What one call asks of the service.
struct ServiceRequest {
    QUrl baseURL;
    QByteArray method;
    QString path;
    std::optional<Json> body;
    std::optional<Secret> token;
};

/// One call: makes the request and checks the status of the reply.
class ServiceCallBase : public Exchange {
public:
    explicit ServiceCallBase(ServiceRequest request);

    /// Sends the device token along.
    void authorize(Secret token);
    void setBody(Json::Object body);

    [[nodiscard]] Result<HttpRequest> request() const final;

protected:
    /// The text of a reply that succeeded; the text of any other is dropped unread.
    [[nodiscard]] static Result<QByteArray> successText(Result<HttpReply> reply);

private:
    ServiceRequest m_request;
};

/// One call whose answer carries the record `T`.
template <WireRecord T> class ServiceCall final : public ServiceCallBase {
public:
    using ServiceCallBase::ServiceCallBase;

    void receive(Result<HttpReply> reply) override
    {
        const auto text = successText(std::move(reply));
        if (!text) {
            m_answer = std::unexpected(text.error());
            return;
        }
        auto envelope = decodeRecord<APIResponse<T>>(*text);
        if (envelope)
            m_answer = std::move(envelope->data);
        else
            m_answer = std::unexpected(envelope.error());
    }

    [[nodiscard]] const Result<T>& answer() const { return m_answer; }

private:
    Result<T> m_answer = failed(Failure::Kind::cancelled);
};

} // namespace orvella
