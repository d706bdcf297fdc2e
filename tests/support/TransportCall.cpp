#include "support/TransportCall.h"

#include "api/CurlTransport.h"

#include <QTest>

namespace orvella {

TransportCall::TransportCall(Transport& transport, Result<HttpRequest> request)
    : m_exchange(std::make_shared<PlainExchange>(std::move(request)))
{
    run(transport, m_exchange, m_stop.get_token(), m_progress);
}

TransportCall::~TransportCall()
{
    m_stop.request_stop();
}

Result<HttpReply> TransportCall::wait()
{
    constexpr int kMilliseconds = 20'000;
    if (!QTest::qWaitFor([this] { return isOver(); }, kMilliseconds))
        qFatal("The call does not end.");
    return m_exchange->reply().value();
}

QCoro::Task<> TransportCall::run(
    Transport& transport, std::shared_ptr<Exchange> exchange, std::stop_token stop, std::shared_ptr<Progress> progress)
{
    co_await transport.run(exchange, stop);
    progress->thread = QThread::currentThread();
    ++progress->resumptions;
}

Result<HttpReply> ask(HttpRequest request, CurlOptions options)
{
    CurlTransport transport(std::move(options));
    TransportCall call(transport, std::move(request));
    return call.wait();
}

HttpRequest aGet(const QUrl& url)
{
    return {.method = "GET", .url = url, .headers = {}, .body = {}};
}

HttpRequest aPost(const QUrl& url, const QByteArray& body)
{
    return {.method = "POST", .url = url, .headers = {{"content-type", "application/json"}}, .body = body};
}

char* toString(const Failure& failure)
{
    return qstrdup(QByteArray::number(static_cast<int>(failure.kind)) + ' ' + failure.description.toUtf8());
}

} // namespace orvella
