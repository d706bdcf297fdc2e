#pragma once

#include "support/RawServer.h"

#include <QString>

namespace orvella {

/// Stands between the program and a service on the loopback: remembers every request, byte for byte, and holds back
/// answers. The service carries out what it is asked at once, whether its answer is held back or not.
///
/// It lives in the test's own main loop.
class RecordingProxy final : public QObject {
    Q_OBJECT

public:
    /// `service` is an address such as "http://127.0.0.1:43210".
    explicit RecordingProxy(const QString& service);

    /// What the program is given in place of the service.
    [[nodiscard]] QString address() const;

    [[nodiscard]] const std::vector<RawRequest>& requests() const { return m_server.requests(); }

    /// Keeps from now on what the service answers on this path; on none, where it is empty.
    void hold(const QString& path) { m_held = path; }

    /// The answers that were kept so far.
    [[nodiscard]] const QByteArrayList& heldAnswers() const { return m_heldAnswers; }

private:
    void forward(RawConnection& connection, const RawRequest& request);

    quint16 m_port;
    QString m_held;
    QByteArrayList m_heldAnswers;
    RawServer m_server;
};

} // namespace orvella
