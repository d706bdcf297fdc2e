#include "sandbox/Service.h"

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

Result<std::unique_ptr<Service>> Service::start(Setup setup, Clock& clock, Moment startDate, Announcer announce)
{
    auto database = Database::open(setup.databasePath);
    if (!database)
        return std::unexpected(database.error());
    auto server = std::make_unique<Server>(clock, setup.faults);
    if (!server->listenOn(setup.port)) {
        return failed(Failure::Kind::refused, u"Port %1 cannot be listened on."_s.arg(setup.port));
    }
    return std::unique_ptr<Service>(
        new Service(std::move(setup), *std::move(database), std::move(server), clock, startDate, announce));
}

Service::Service(Setup setup, std::unique_ptr<Database> database, std::unique_ptr<Server> server, Clock& clock,
    Moment startDate, const Announcer& announce)
    : m_campaigns(std::move(setup.campaigns))
    , m_database(std::move(database))
    , m_server(std::move(server))
    , m_origin(u"http://127.0.0.1:%1"_s.arg(m_server->port()))
    , m_time(clock, startDate)
    , m_devices(*m_database)
    , m_ledger(*m_database)
    , m_api(m_campaigns, m_devices, m_ledger, m_time, setup.pollSeconds, m_origin, announce)
    , m_pages(m_campaigns, m_devices, m_ledger, m_time, announce)
{
    m_server->setHandler([this](const Request& request) { return answer(request); });
}

Reply Service::answer(const Request& request)
{
    // A page elsewhere whose name was made to lead here would otherwise count as one of our own.
    const auto host = QString::fromLatin1(request.headers.value("host"));
    const auto port = u":%1"_s.arg(m_server->port());
    if (host != u"127.0.0.1"_s + port && host != u"localhost"_s + port)
        return Api::refusal(421, u"the host is not this service"_s);

    m_database->begin();
    const auto* const route = findCall(request.path);
    auto reply = route ? m_api.answer(*route, request) : m_pages.answer(request);
    if (!m_database->end())
        return Api::refusal(500, u"the database could not be used"_s);
    return reply;
}

} // namespace orvella::sandbox
