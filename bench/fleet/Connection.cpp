#include "fleet/Connection.h"

#include "fleet/ModelService.h"
#include "platform/linux/secrets/JoinedStop.h"

namespace orvella::fleet {

using namespace Qt::Literals::StringLiterals;

Connection::Connection(Clock& clock, ModelService& service, Clock::duration roundTrip, quint64 seed)
    : m_clock(clock)
    , m_service(service)
    , m_roundTrip(roundTrip)
    , m_chance(seed)
{
}

QCoro::Task<> Connection::run(std::shared_ptr<Exchange> exchange, std::stop_token stop)
{
    const auto request = exchange->request();
    if (!request)
        qFatal("A request cannot be made.");
    const auto path = request->url.path();
    const auto roundTrip = nextRoundTrip();
    const auto there = roundTrip * 5 / 2;
    co_await m_clock.sleep(there, stop);
    if (stop.stop_requested())
        co_return;
    m_service.note(path);
    const auto answered = co_await isAnswered(kLimit - there, stop);
    if (stop.stop_requested())
        co_return;
    if (!answered) {
        exchange->receive(failed(Failure::Kind::unreachable, u"The service does not answer."_s));
        co_return;
    }
    auto reply = m_service.answer(path);
    co_await m_clock.sleep(roundTrip / 2, stop);
    if (stop.stop_requested())
        co_return;
    exchange->receive(std::move(reply));
}

QCoro::Task<bool> Connection::isAnswered(Clock::duration patience, std::stop_token stop)
{
    if (m_service.condition() != ModelService::Condition::holding)
        co_return true;
    const auto answersAgain = m_service.answersAgain();
    const JoinedStop either(stop, answersAgain);
    co_await m_clock.sleep(patience, either.token());
    co_return answersAgain.stop_requested();
}

Clock::duration Connection::nextRoundTrip()
{
    constexpr qint64 kPercent = 100;
    return m_roundTrip * m_chance.between(kPercent, kPercent + kPercent / 4) / kPercent;
}

} // namespace orvella::fleet
