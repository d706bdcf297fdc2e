#pragma once

#include "support/RawServer.h"
#include "support/RecordJson.h"

#include <QHash>

namespace orvella {

/// The service, byte by byte over real sockets: it answers every call with a sample until the test breaks it.
class RawService final {
public:
    RawService();
    /// Speaks TLS.
    explicit RawService(const QSslConfiguration& tls);

    /// Answers the calls of one path with this record. Holds through faults.
    template <WireRecord T> void answer(const QString& path, const T& record)
    {
        m_records.insert(path, toJson(record));
    }

    /// From now on every call is answered so, or those of one path.
    void breakDown(RawServer::Answer fault);
    void breakDown(const QString& path, RawServer::Answer fault);
    /// Sends the bytes that `disfigured` makes of the good body, and ends the connection.
    void disfigure(std::function<QByteArray(const QByteArray& body)> disfigured);
    /// Breaks every connection as soon as it is there.
    void cutConnections();
    /// Takes no connection at all.
    void refuseConnections() { m_server.close(); }
    /// Takes every fault back but another TLS.
    void recover();

    /// What a good answer to this path is made of: its body.
    [[nodiscard]] QByteArray body(const QString& path) const;

    /// The paths of all requests that came in whole, in order.
    [[nodiscard]] QStringList paths() const;
    void forgetRequests() { m_forgotten = m_server.requests().size(); }

    [[nodiscard]] RawServer& server() { return m_server; }

private:
    void answerSamples();
    void reply(RawConnection& connection, const RawRequest& request);

    RawServer m_server;
    QHash<QString, Json> m_records;
    RawServer::Answer m_fault;
    QHash<QString, RawServer::Answer> m_faults;
    std::size_t m_forgotten = 0;
};

} // namespace orvella
