#include "api/ServiceCall.h"

#include "api/ServiceAddress.h"

#include <QCoreApplication>

namespace orvella {

namespace {

constexpr int kFirstSuccess = 200;
constexpr int kLastSuccess = 299;
constexpr int kFirstRedirect = 300;
constexpr int kLastRedirect = 399;
/// Network Authentication Required (RFC 6585, section 6).
constexpr int kSignInRequired = 511;

/// Networks that want their users to sign in first answer in place of every service: with a page or the way to one.
Failure networkAnswered(Failure::Kind kind)
{
    return {kind,
        QCoreApplication::translate(
            "ServiceCall", "The network answers in place of the service. You may have to sign in to it first.")};
}

/// A page of the web, where JSON is due. No JSON text begins so.
bool isPage(const QByteArray& body)
{
    constexpr QByteArrayView kByteOrderMark = "\xEF\xBB\xBF";
    QByteArrayView text(body);
    if (text.startsWith(kByteOrderMark))
        text = text.sliced(kByteOrderMark.size());
    return text.trimmed().startsWith('<');
}

} // namespace

ServiceCallBase::ServiceCallBase(ServiceRequest request)
    : m_request(std::move(request))
{
}

void ServiceCallBase::authorize(Secret token)
{
    m_request.token = std::move(token);
}

void ServiceCallBase::setBody(Json::Object body)
{
    m_request.body = std::move(body);
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
    const auto status = reply->status;
    if ((status >= kFirstRedirect && status <= kLastRedirect) || status == kSignInRequired)
        return std::unexpected(networkAnswered(Failure::Kind::badServerResponse));
    if (status < kFirstSuccess || status > kLastSuccess) {
        return failed(Failure::Kind::badServerResponse,
            QCoreApplication::translate("ServiceCall", "The service could not answer the request."));
    }
    if (isPage(reply->body))
        return std::unexpected(networkAnswered(Failure::Kind::undecodable));
    return std::move(reply->body);
}

} // namespace orvella
