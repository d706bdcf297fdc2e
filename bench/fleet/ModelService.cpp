#include "fleet/ModelService.h"

#include "api/Endpoints.h"
#include "support/RecordJson.h"
#include "support/Samples.h"

namespace orvella::fleet {

namespace {

constexpr int kSuccess = 200;
constexpr int kNotFound = 404;
constexpr int kUnavailable = 503;

template <WireRecord T> HttpReply success(const T& record)
{
    return {kSuccess, replyOf(toJson(record))};
}

} // namespace

ModelService::ModelService(const Clock& clock)
    : m_clock(clock)
    , m_arrivals(clock.now())
{
}

void ModelService::setCondition(Condition condition)
{
    m_condition = condition;
    // Whoever waited may wait for the next time when this returns.
    std::exchange(m_answersAgain, std::stop_source()).request_stop();
}

void ModelService::spreadPauses(qint64 shortest, qint64 longest)
{
    m_pauses = {shortest, longest};
}

HttpReply ModelService::answer(const QString& path)
{
    if (m_condition != Condition::answering)
        return {kUnavailable, {}};
    if (path == endpoints::kHeartbeat)
        return success(EmptyPayload());
    if (path == endpoints::kWallet)
        return success(aWallet());
    if (path != endpoints::kAdsAvailable)
        return {kNotFound, {}};
    auto response = noOffer();
    if (m_pauses)
        response.pollSeconds = m_chance.between(m_pauses->shortest, m_pauses->longest);
    return success(response);
}

} // namespace orvella::fleet
