#include "support/RawService.h"

#include "api/Endpoints.h"
#include "support/RawAnswers.h"
#include "support/Samples.h"

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

QString pathOf(const RawRequest& request)
{
    return QString::fromLatin1(request.firstLine().split(' ').value(1));
}

} // namespace

RawService::RawService()
    : m_server([this](RawConnection& connection, const RawRequest& request) { reply(connection, request); })
{
    answerSamples();
}

RawService::RawService(const QSslConfiguration& tls)
    : m_server(tls, [this](RawConnection& connection, const RawRequest& request) { reply(connection, request); })
{
    answerSamples();
}

void RawService::breakDown(RawServer::Answer fault)
{
    m_fault = std::move(fault);
}

void RawService::breakDown(const QString& path, RawServer::Answer fault)
{
    m_faults.insert(path, std::move(fault));
}

void RawService::disfigure(std::function<QByteArray(const QByteArray& body)> disfigured)
{
    breakDown([this, disfigured = std::move(disfigured)](RawConnection& connection, const RawRequest& request) {
        connection.send(disfigured(body(pathOf(request))));
        connection.finish();
    });
}

void RawService::cutConnections()
{
    m_server.onConnection([](RawConnection& connection) { connection.reset(); });
}

void RawService::recover()
{
    m_fault = {};
    m_faults.clear();
    m_server.onConnection([](RawConnection&) {});
    m_server.reopen();
}

QByteArray RawService::body(const QString& path) const
{
    return replyOf(m_records.value(path));
}

QStringList RawService::paths() const
{
    QStringList paths;
    for (auto index = m_forgotten; index < m_server.requests().size(); ++index)
        paths.append(pathOf(m_server.requests().at(index)));
    return paths;
}

void RawService::answerSamples()
{
    answer(endpoints::kRegister, aRegistration());
    answer(endpoints::kHeartbeat, EmptyPayload());
    answer(endpoints::kPreferences, EmptyPayload());
    answer(endpoints::kAdsAvailable, noOffer());
    answer(endpoints::kSessionStart, aSession());
    answer(endpoints::kSessionComplete, aCompletion());
    answer(endpoints::kClick, aClick());
    answer(endpoints::kWallet, aWallet());
}

void RawService::reply(RawConnection& connection, const RawRequest& request)
{
    const auto path = pathOf(request);
    const auto fault = m_fault ? m_fault : m_faults.value(path);
    const auto answer = fault ? fault : answer::reply(200, body(path));
    answer(connection, request);
}

} // namespace orvella
