#include "support/RecordingProxy.h"

#include <QPointer>
#include <QTcpSocket>
#include <QUrl>

namespace orvella {

namespace {

/// The service answers only those that call it by its own name.
QByteArray readdressed(const RawRequest& request, quint16 from, quint16 to)
{
    auto head = request.head;
    head.replace("host: 127.0.0.1:" + QByteArray::number(from), "host: 127.0.0.1:" + QByteArray::number(to));
    head.replace("Host: 127.0.0.1:" + QByteArray::number(from), "Host: 127.0.0.1:" + QByteArray::number(to));
    return head + "\r\n\r\n" + request.body;
}

} // namespace

RecordingProxy::RecordingProxy(const QString& service)
    : m_port(static_cast<quint16>(QUrl(service).port()))
    , m_server([this](RawConnection& connection, const RawRequest& request) { forward(connection, request); })
{
}

QString RecordingProxy::address() const
{
    return QStringLiteral("http://127.0.0.1:%1").arg(m_server.port());
}

void RecordingProxy::forward(RawConnection& connection, const RawRequest& request)
{
    auto* const socket = new QTcpSocket(this);
    socket->connectToHost(QHostAddress(QHostAddress::LocalHost), m_port);
    socket->write(readdressed(request, m_server.port(), m_port));
    const bool isHeld = !m_held.isEmpty() && request.firstLine().contains(' ' + m_held.toUtf8() + ' ');
    // The service ends the connection after its answer.
    connect(socket, &QTcpSocket::disconnected, this, [this, socket, isHeld, caller = QPointer(&connection)] {
        socket->deleteLater();
        const auto answer = socket->readAll();
        if (isHeld) {
            m_heldAnswers.append(answer);
        } else if (caller && caller->isOpen()) {
            caller->send(answer);
            caller->finish();
        }
    });
}

} // namespace orvella
