#pragma once

#include "base/Clock.h"
#include "sandbox/FaultPlan.h"
#include "sandbox/Reply.h"
#include "sandbox/Request.h"

#include <QAbstractHttpServer>

#include <functional>
#include <set>

namespace orvella::sandbox {

/// Carries requests from the sockets to a handler and its answers back, one per connection, and spoils those that the
/// fault plan names.
class Server final : public QAbstractHttpServer {
    Q_OBJECT

public:
    using Handler = std::function<Reply(const Request&)>;

    Server(Clock& clock, FaultPlan faults);
    ~Server() override;

    /// Listens on the loopback interface only; 0 stands for any free port. Answers false where it cannot.
    [[nodiscard]] bool listenOn(quint16 port);

    /// The port that it listens on.
    [[nodiscard]] quint16 port() const { return m_port; }

    void setHandler(Handler handler) { m_handler = std::move(handler); }

protected:
    bool handleRequest(const QHttpServerRequest& request, QTcpSocket* socket) override;
    void missingHandler(const QHttpServerRequest& request, QTcpSocket* socket) override;

private:
    Clock& m_clock;
    FaultPlan m_faults;
    Handler m_handler;
    quint16 m_port = 0;
    std::set<Clock::TimerId> m_delays;
};

} // namespace orvella::sandbox
