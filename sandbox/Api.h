#pragma once

#include "base/Json.h"
#include "sandbox/Announcer.h"
#include "sandbox/Call.h"
#include "sandbox/Campaigns.h"
#include "sandbox/Devices.h"
#include "sandbox/Ledger.h"
#include "sandbox/Reply.h"
#include "sandbox/Request.h"
#include "sandbox/ServiceTime.h"

#include <expected>

namespace orvella::sandbox {

/// The eight calls of the client.
///
/// What the client never sends is refused with a reason: the service is there to check it, not to please it.
class Api final {
public:
    Api(const Campaigns& campaigns, Devices& devices, Ledger& ledger, const ServiceTime& time, qint64 pollSeconds,
        QString origin, Announcer announce);

    /// Answers a call. Runs within one transaction of the database.
    [[nodiscard]] Reply answer(const CallRoute& route, const Request& request);

    /// An answer that is not a success.
    [[nodiscard]] static Reply refusal(int status, const QString& reason);

private:
    /// The record for "data", or the answer that says why there is none.
    using Answer = std::expected<Json::Object, Reply>;

    Answer dispatch(Call call, const Json& body, Device& device);

    Answer registerDevice(const Json& body);
    Answer heartbeat(const Json& body, Device& device);
    Answer preferences(const Json& body, Device& device);
    Answer available(const Json& body, Device& device);
    Answer start(const Json& body, const Device& device);
    Answer complete(const Json& body, const Device& device);
    Answer click(const Json& body, const Device& device);
    Answer wallet(const Device& device);

    [[nodiscard]] QString landingPage(const QString& campaignId) const;
    [[nodiscard]] Json::Object recordOf(const Offer& offer) const;

    const Campaigns& m_campaigns;
    Devices& m_devices;
    Ledger& m_ledger;
    const ServiceTime& m_time;
    qint64 m_pollSeconds;
    QString m_origin;
    Announcer m_announce;
};

} // namespace orvella::sandbox
