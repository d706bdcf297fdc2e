#include "sandbox/Listener.h"

#include "sandbox/Api.h"
#include "sandbox/Wire.h"

#include <QTcpSocket>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

void Listener::incomingConnection(qintptr handle)
{
    auto* const socket = new QTcpSocket(this);
    if (!socket->setSocketDescriptor(handle)) {
        delete socket;
        return;
    }
    // Connected before the HTTP server takes the socket over, so that this sees the bytes before they are read.
    connect(socket, &QTcpSocket::readyRead, socket, [this, socket, received = qint64 {0}]() mutable {
        received += socket->bytesAvailable();
        if (received > kLargestRequest)
            refuse(*socket);
    });
    addPendingConnection(socket);
}

void Listener::refuse(QTcpSocket& socket)
{
    socket.disconnect(SIGNAL(readyRead()));
    if (socket.isTransactionStarted())
        socket.commitTransaction();
    // The rest is read and dropped: closing over unread bytes would reset the connection and lose the answer.
    connect(&socket, &QTcpSocket::readyRead, &socket, [&socket] { socket.skip(socket.bytesAvailable()); });
    socket.skip(socket.bytesAvailable());
    socket.write(written(Api::refusal(413, u"the request is too large"_s)));
}

} // namespace orvella::sandbox
