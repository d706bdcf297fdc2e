#include "api/ServiceCall.h"

#include "api/ServiceAddress.h"

#include <QCoreApplication>

namespace orvella {

namespace {

constexpr int kFirstSuccess = 200;
constexpr int kLastSuccess = 299;

} // namespace

ServiceCallBase::ServiceCallBase(ServiceRequest request)
    : m_request(std::move(request))
{
}

void ServiceCallBase::authorize(Secret token)
{
    m_request.token = std::move(token);
}

Result<HttpRequest> ServiceCallBase::request() const
{
    HttpRequest request {m_request.method, ServiceAddress::resolve(m_request.baseURL, m_request.path), {}, {}};
    if (m_request.body)
        request.headers.emplace_back("content-type", "application/json");
    if (m_request.token)
        request.headers.emplace_back("authorization", "Bearer " + m_request.token->reveal());
    if (m_request.body) {
        auto text = m_request.body->serialise();
        if (!text)
            return std::unexpected(text.error());
        request.body = *std::move(text);
    }
    return request;
}

Result<QByteArray> ServiceCallBase::successText(Result<HttpReply> reply)
{
    if (!reply)
        return std::unexpected(std::move(reply.error()));
    if (reply->status < kFirstSuccess || reply->status > kLastSuccess) {
        return failed(Failure::Kind::badServerResponse,
            QCoreApplication::translate("ServiceCall", "The service could not answer the request."));
    }
    return std::move(reply->body);
}

} // namespace orvella
