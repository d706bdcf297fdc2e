#include "support/RawConnection.h"

#include <QTimerEvent>

#include <sys/socket.h>

namespace orvella {

namespace {

// The length that the head declares, under whatever spelling.
qsizetype bodySize(const QByteArray& head)
{
    const QByteArray name = "\r\ncontent-length:";
    const auto start = head.toLower().indexOf(name);
    if (start < 0)
        return 0;
    const auto value = head.sliced(start + name.size());
    return value.left(value.indexOf('\r')).trimmed().toLongLong();
}

} // namespace

RawConnection::RawConnection(QTcpSocket* socket, QObject* parent)
    : QObject(parent)
    , m_socket(socket)
{
    m_socket->setParent(this);
    connect(m_socket, &QTcpSocket::readyRead, this, &RawConnection::read);
    // What was sent along with the handshake is there already.
    QMetaObject::invokeMethod(this, &RawConnection::read, Qt::QueuedConnection);
}

void RawConnection::send(const QByteArray& bytes)
{
    m_socket->write(bytes);
    m_socket->flush();
}

void RawConnection::drip(const QByteArray& bytes, std::chrono::milliseconds pause)
{
    m_dripping = bytes;
    startTimer(pause, Qt::PreciseTimer);
}

void RawConnection::finish()
{
    m_socket->disconnectFromHost();
}

void RawConnection::reset()
{
    const linger atOnce {1, 0};
    ::setsockopt(static_cast<int>(m_socket->socketDescriptor()), SOL_SOCKET, SO_LINGER, &atOnce, sizeof atOnce);
    m_socket->abort();
}

void RawConnection::timerEvent(QTimerEvent* event)
{
    if (!isOpen()) {
        killTimer(event->timerId());
        return;
    }
    send(m_dripping.sliced(m_dripped, 1));
    m_dripped = (m_dripped + 1) % m_dripping.size();
}

void RawConnection::read()
{
    if (!m_socket->isOpen())
        return;
    m_received += m_socket->readAll();
    const auto end = m_received.indexOf("\r\n\r\n");
    if (end < 0)
        return;
    const auto head = m_received.first(end);
    const auto start = end + 4;
    const auto size = bodySize(head + "\r\n");
    if (m_received.size() - start < size)
        return;
    const RawRequest request {head, m_received.sliced(start, size)};
    m_received.remove(0, start + size);
    Q_EMIT requested(request);
}

} // namespace orvella
