#pragma once

#include "support/RawRequest.h"

#include <QObject>
#include <QTcpSocket>

#include <chrono>

namespace orvella {

/// The server's end of one connection.
class RawConnection final : public QObject {
    Q_OBJECT

public:
    explicit RawConnection(QTcpSocket* socket, QObject* parent);

    void send(const QByteArray& bytes);
    /// Sends `bytes` one at a time, over and over for as long as the other end listens.
    void drip(const QByteArray& bytes, std::chrono::milliseconds pause);
    /// Ends the connection in good order, after what was sent.
    void finish();
    /// Breaks the connection: the other end sees a reset, and maybe not what was sent last.
    void reset();

    [[nodiscard]] bool isOpen() const { return m_socket->state() == QAbstractSocket::ConnectedState; }

Q_SIGNALS:
    void requested(const RawRequest& request);

protected:
    void timerEvent(QTimerEvent* event) override;

private:
    void read();

    QTcpSocket* m_socket;
    QByteArray m_received;
    QByteArray m_dripping;
    qsizetype m_dripped = 0;
};

} // namespace orvella
