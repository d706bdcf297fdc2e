#pragma once

#include "support/RawConnection.h"

#include <QPointer>
#include <QSslConfiguration>
#include <QTcpServer>
#include <QUrl>

#include <functional>
#include <memory>
#include <vector>

namespace orvella {

/// A server on the loopback that says what the test wants, byte for byte, and remembers what it heard.
///
/// It lives in the test's own main loop. See RawAnswers.h for ready answers.
class RawServer final : public QObject {
    Q_OBJECT

public:
    /// Called with each whole request.
    using Answer = std::function<void(RawConnection&, const RawRequest&)>;

    explicit RawServer(Answer answer);
    /// Speaks TLS.
    RawServer(const QSslConfiguration& tls, Answer answer);

    /// Called with each connection, before anything is read from it.
    void onConnection(std::function<void(RawConnection&)> connected) { m_connected = std::move(connected); }

    /// Answers otherwise from now on.
    void setAnswer(Answer answer) { m_answer = std::move(answer); }
    /// Shows another certificate, or speaks otherwise, from the next connection on. Only for one that speaks TLS.
    void setTls(const QSslConfiguration& tls);
    /// Refuses connections until `reopen`, which comes back under the same address.
    void close();
    void reopen();

    [[nodiscard]] quint16 port() const { return m_port; }

    [[nodiscard]] QUrl url(const QString& path = QStringLiteral("/")) const;

    /// How many connections there were, the ended ones included.
    [[nodiscard]] std::size_t connections() const { return m_connections.size(); }

    [[nodiscard]] std::size_t openConnections() const;

    [[nodiscard]] const std::vector<RawRequest>& requests() const { return m_requests; }

private:
    RawServer(std::unique_ptr<QTcpServer> server, bool isSecure, Answer answer);

    void accept();

    std::unique_ptr<QTcpServer> m_server;
    bool m_isSecure;
    quint16 m_port = 0;
    Answer m_answer;
    std::function<void(RawConnection&)> m_connected = [](RawConnection&) {};
    std::vector<RawConnection*> m_connections;
    std::vector<RawRequest> m_requests;
};

} // namespace orvella
