#pragma once

#include <QTcpServer>

namespace orvella::sandbox {

/// Accepts connections and sees to it that no request is larger than it needs to be.
class Listener final : public QTcpServer {
    Q_OBJECT

public:
    /// Header lines and body together. The client's largest request has less than 2 KiB.
    static constexpr qint64 kLargestRequest = 65'536;

    using QTcpServer::QTcpServer;

protected:
    void incomingConnection(qintptr handle) override;

private:
    void refuse(QTcpSocket& socket);
};

} // namespace orvella::sandbox
