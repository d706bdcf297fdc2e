#include "sandbox/Server.h"

#include "sandbox/Api.h"
#include "sandbox/Listener.h"
#include "sandbox/Wire.h"

#include <QHttpServerRequest>
#include <QPointer>
#include <QTcpSocket>

#include <sys/socket.h>

#include <memory>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

Request requestOf(const QHttpServerRequest& request)
{
    Request result;
    switch (request.method()) {
    case QHttpServerRequest::Method::Get:
        result.method = Request::Method::get;
        break;
    case QHttpServerRequest::Method::Post:
        result.method = Request::Method::post;
        break;
    default:
        result.method = Request::Method::other;
    }
    result.path = request.url().path();
    result.query = request.query();
    for (const auto& [name, value] : request.headers())
        result.headers.insert(name.toLower(), value);
    result.body = request.body();
    return result;
}

/// Cuts the connection so that the other side sees a reset and not the end of an answer.
void reset(QTcpSocket& socket)
{
    const linger atOnce {.l_onoff = 1, .l_linger = 0};
    setsockopt(static_cast<int>(socket.socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    socket.abort();
}

void send(QTcpSocket& socket, Reply reply, Fault::Kind fault)
{
    if (fault == Fault::Kind::reset) {
        reset(socket);
        return;
    }
    if (fault == Fault::Kind::garbage) {
        reply.status = 200;
        reply.body = "<!doctype html><title>Sign in to the network</title>";
    }
    if (fault == Fault::Kind::truncated)
        socket.write(head(reply) + reply.body.first(reply.body.size() / 2));
    else
        socket.write(written(reply));
    socket.disconnectFromHost();
}

Reply faultyReply(int status)
{
    auto reply = Api::refusal(status, u"the service was told to fail"_s);
    if (status / 100 == 3)
        reply.headers.emplace_back("location", "/viewer");
    return reply;
}

} // namespace

Server::Server(Clock& clock, FaultPlan faults)
    : m_clock(clock)
    , m_faults(faults)
{
}

Server::~Server()
{
    for (const auto delay : m_delays)
        m_clock.stopTimer(delay);
}

bool Server::listenOn(quint16 port)
{
    auto listener = std::make_unique<Listener>();
    if (!listener->listen(QHostAddress::LocalHost, port))
        return false;
    m_port = listener->serverPort();
    bind(listener.release());
    return true;
}

bool Server::handleRequest(const QHttpServerRequest& request, QTcpSocket* socket)
{
    // One request per connection: what else is sent on it is not looked at.
    socket->disconnect(SIGNAL(readyRead()));
    socket->setReadBufferSize(Listener::kLargestRequest);

    const auto received = requestOf(request);
    const auto* const route = findCall(received.path);
    const auto fault = route ? m_faults.of(route->call) : Fault {};
    auto reply = fault.kind == Fault::Kind::status ? faultyReply(fault.status) : m_handler(received);
    if (fault.delay == std::chrono::milliseconds::zero()) {
        send(*socket, std::move(reply), fault.kind);
        return true;
    }
    const auto timer = std::make_shared<Clock::TimerId>();
    *timer = m_clock.startTimer(
        fault.delay, [this, timer, socket = QPointer(socket), reply = std::move(reply), kind = fault.kind] {
            m_delays.erase(*timer);
            if (socket)
                send(*socket, reply, kind);
        });
    m_delays.insert(*timer);
    return true;
}

void Server::missingHandler(const QHttpServerRequest&, QTcpSocket* socket)
{
    reset(*socket);
}

} // namespace orvella::sandbox
