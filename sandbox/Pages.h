#pragma once

#include "sandbox/Announcer.h"
#include "sandbox/Campaigns.h"
#include "sandbox/Devices.h"
#include "sandbox/Ledger.h"
#include "sandbox/Reply.h"
#include "sandbox/Request.h"
#include "sandbox/ServiceTime.h"

namespace orvella::sandbox {

/// The pages for the viewer. There is one account, "demo", and no sign-in.
class Pages final {
public:
    Pages(const Campaigns& campaigns, Devices& devices, Ledger& ledger, const ServiceTime& time, Announcer announce);

    /// Answers a request for anything that is not a call. Runs within one transaction of the database.
    [[nodiscard]] Reply answer(const Request& request);

private:
    Reply viewer(const Request& request);
    Reply activation(const Request& request);
    Reply activate(const Request& request);
    [[nodiscard]] Reply advertiser(const QString& campaignId) const;

    const Campaigns& m_campaigns;
    Devices& m_devices;
    Ledger& m_ledger;
    const ServiceTime& m_time;
    Announcer m_announce;
};

} // namespace orvella::sandbox
