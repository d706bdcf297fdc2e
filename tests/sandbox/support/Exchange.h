#pragma once

#include "sandbox/support/HttpAnswer.h"

namespace orvella::sandbox {

/// One request as raw bytes over a real socket, and what comes back.
///
/// The system's own socket and not Qt's: it tells a reset from an orderly end.
class Exchange final {
public:
    Exchange(quint16 port, QByteArray bytes);
    Exchange(const Exchange&) = delete;
    Exchange& operator=(const Exchange&) = delete;
    ~Exchange();

    /// Lets the service work until the connection has ended.
    [[nodiscard]] HttpAnswer answer();

    /// What has come so far.
    [[nodiscard]] const QByteArray& received();

private:
    /// Sends and receives what is possible without waiting.
    void proceed();

    int m_socket;
    QByteArray m_unsent;
    QByteArray m_received;
    bool m_isOver = false;
    bool m_wasReset = false;
};

} // namespace orvella::sandbox
