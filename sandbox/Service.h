#pragma once

#include "base/Clock.h"
#include "base/Result.h"
#include "sandbox/Api.h"
#include "sandbox/Pages.h"
#include "sandbox/Server.h"

#include <memory>

namespace orvella::sandbox {

/// The whole service, put together and listening.
class Service final {
public:
    struct Setup {
        /// 0 stands for any free port.
        quint16 port = 0;
        /// Empty for a database in memory.
        QString databasePath {};
        Campaigns campaigns = Campaigns::seeded();
        qint64 pollSeconds = kUsualPollSeconds;
        FaultPlan faults {};
    };

    static constexpr qint64 kUsualPollSeconds = 60;

    /// `startDate` is the date of now. The clock outlives the service.
    [[nodiscard]] static Result<std::unique_ptr<Service>> start(
        Setup setup, Clock& clock, Moment startDate, Announcer announce);

    /// Where it is reached: "http://127.0.0.1:8787".
    [[nodiscard]] const QString& origin() const { return m_origin; }

private:
    Service(Setup setup, std::unique_ptr<Database> database, std::unique_ptr<Server> server, Clock& clock,
        Moment startDate, const Announcer& announce);

    Reply answer(const Request& request);

    Campaigns m_campaigns;
    std::unique_ptr<Database> m_database;
    std::unique_ptr<Server> m_server;
    QString m_origin;
    ServiceTime m_time;
    Devices m_devices;
    Ledger m_ledger;
    Api m_api;
    Pages m_pages;
};

} // namespace orvella::sandbox
