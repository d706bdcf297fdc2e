#include "support/RawServer.h"

#include <QSslServer>

#include <algorithm>

namespace orvella {

namespace {

std::unique_ptr<QTcpServer> secureServer(const QSslConfiguration& tls)
{
    auto server = std::make_unique<QSslServer>();
    server->setSslConfiguration(tls);
    return server;
}

} // namespace

RawServer::RawServer(Answer answer)
    : RawServer(std::make_unique<QTcpServer>(), false, std::move(answer))
{
}

RawServer::RawServer(const QSslConfiguration& tls, Answer answer)
    : RawServer(secureServer(tls), true, std::move(answer))
{
}

RawServer::RawServer(std::unique_ptr<QTcpServer> server, bool isSecure, Answer answer)
    : m_server(std::move(server))
    , m_isSecure(isSecure)
    , m_answer(std::move(answer))
{
    connect(m_server.get(), &QTcpServer::pendingConnectionAvailable, this, &RawServer::accept);
    reopen();
    m_port = m_server->serverPort();
}

void RawServer::setTls(const QSslConfiguration& tls)
{
    qobject_cast<QSslServer*>(m_server.get())->setSslConfiguration(tls);
}

void RawServer::close()
{
    m_server->close();
}

void RawServer::reopen()
{
    if (!m_server->isListening() && !m_server->listen(QHostAddress::LocalHost, m_port))
        qFatal("The test server cannot listen.");
}

QUrl RawServer::url(const QString& path) const
{
    QUrl url;
    url.setScheme(m_isSecure ? QStringLiteral("https") : QStringLiteral("http"));
    url.setHost(QStringLiteral("127.0.0.1"));
    url.setPort(port());
    url.setPath(path);
    return url;
}

std::size_t RawServer::openConnections() const
{
    return static_cast<std::size_t>(std::ranges::count_if(m_connections, &RawConnection::isOpen));
}

void RawServer::accept()
{
    auto* const connection = new RawConnection(m_server->nextPendingConnection(), this);
    m_connections.push_back(connection);
    m_connected(*connection);
    connect(connection, &RawConnection::requested, this, [this, connection](const RawRequest& request) {
        m_requests.push_back(request);
        m_answer(*connection, request);
    });
}

} // namespace orvella
