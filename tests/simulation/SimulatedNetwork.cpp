#include "simulation/SimulatedNetwork.h"

#include "simulation/SimulatedService.h"
#include "support/HeldFlow.h"

#include <array>

namespace orvella::simulation {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// After which a request fails, whatever there is of an answer.
constexpr auto kTimeLimit = 60s;

Result<HttpReply> unreachable()
{
    return failed(Failure::Kind::unreachable, u"The service cannot be reached."_s);
}

Result<HttpReply> timedOut()
{
    return failed(Failure::Kind::timedOut, u"The service took too long to answer."_s);
}

} // namespace

struct SimulatedNetwork::Passage {
    Call call;
    Instant deadline;
    HeldFlow flow;
};

SimulatedNetwork::SimulatedNetwork(Clock& clock, Chance& chance, Journal& journal, SimulatedService& service)
    : m_clock(clock)
    , m_chance(chance)
    , m_journal(journal)
    , m_service(service)
    , m_changed(clock.now())
{
}

SimulatedNetwork::~SimulatedNetwork() = default;

QCoro::Task<> SimulatedNetwork::run(std::shared_ptr<Exchange> exchange, std::stop_token stop)
{
    auto request = exchange->request();
    if (!request) {
        exchange->receive(std::unexpected(request.error()));
        co_return;
    }
    const auto passage = std::make_shared<Passage>();
    passage->call.number = ++m_lastNumber;
    passage->deadline = m_clock.now() + kTimeLimit;
    passage->call.path = request->url.path();
    passage->call.request = *std::move(request);
    send(passage);
    ++m_waiting;
    co_await passage->flow.resumedOrStopped(stop);
    --m_waiting;
    if (stop.stop_requested())
        co_return;
    arrives(passage->call);
    exchange->receive(*passage->call.reply);
}

void SimulatedNetwork::change()
{
    using enum Weather;
    static constexpr std::array kForecast {fair, fair, fair, fair, slow, slow, stormy, stormy, lost, closed};
    m_weather = m_chance.pick(kForecast);
    m_changed = m_clock.now();
    m_journal.note(u"network: weather %1"_s.arg(static_cast<int>(m_weather)));
}

void SimulatedNetwork::send(const std::shared_ptr<Passage>& passage)
{
    auto& call = passage->call;
    if (const auto json = Json::parse(call.request.body); json && json->object())
        call.body = *json->object();
    m_journal.note(u"sent %1 %2"_s.arg(call.number).arg(call.path));
    captured(call.request);
    sent(call);
    const auto fate = chooseFate();
    switch (fate) {
    case Fate::lostOnTheWay:
        later(latency(), [this, passage] { arrive(passage, unreachable(), false); });
        break;
    case Fate::silent:
        later(kTimeLimit, [this, passage] { arrive(passage, timedOut(), false); });
        break;
    case Fate::answeredBySomebodyElse:
        later(latency(), [this, passage] { arrive(passage, somebodyElse(), false); });
        break;
    case Fate::delivered:
    case Fate::lostOnTheWayBack:
    case Fate::cut:
    case Fate::garbled:
        // Deliberate: the request gets there even if whoever made it has given up by then.
        later(latency(), [this, passage, fate] { reachService(passage, fate); });
        break;
    }
}

SimulatedNetwork::Fate SimulatedNetwork::chooseFate()
{
    using enum Fate;
    static constexpr std::array kStorm {delivered, delivered, delivered, lostOnTheWay, lostOnTheWayBack,
        lostOnTheWayBack, cut, garbled, answeredBySomebodyElse, silent};
    switch (m_weather) {
    case Weather::fair:
    case Weather::slow:
        return delivered;
    case Weather::stormy:
        return m_chance.pick(kStorm);
    case Weather::lost:
        return m_chance.oneIn(3) ? silent : lostOnTheWay;
    case Weather::closed:
        return answeredBySomebodyElse;
    }
    return delivered;
}

std::chrono::milliseconds SimulatedNetwork::latency()
{
    switch (m_weather) {
    case Weather::fair:
    case Weather::closed:
        return m_chance.between(1ms, 300ms);
    case Weather::lost:
        return m_chance.between(0ms, 5s);
    case Weather::slow:
    case Weather::stormy:
        return m_chance.between(10ms, 40s);
    }
    return {};
}

void SimulatedNetwork::reachService(const std::shared_ptr<Passage>& passage, Fate fate)
{
    const auto reply = m_service.answer(passage->call.request);
    const auto back = latency();
    if (const auto left = passage->deadline - m_clock.now(); left < back) {
        later(left, [this, passage] { arrive(passage, timedOut(), false); });
        return;
    }
    switch (fate) {
    case Fate::lostOnTheWayBack:
        later(back, [this, passage] { arrive(passage, unreachable(), false); });
        break;
    case Fate::cut:
        // With or without a length the two ways in which a cut is seen: as one, or as half a text.
        later(back, [this, passage, reply, isSeen = m_chance.oneIn(2)] {
            const HttpReply half {reply.status, reply.body.first(reply.body.size() / 2)};
            arrive(passage, isSeen ? unreachable() : Result<HttpReply>(half), false);
        });
        break;
    case Fate::garbled:
        later(back, [this, passage, reply, body = garbled(reply.body)] {
            arrive(passage, HttpReply {reply.status, body}, false);
        });
        break;
    default:
        later(back, [this, passage, reply] { arrive(passage, reply, true); });
        break;
    }
}

void SimulatedNetwork::arrive(const std::shared_ptr<Passage>& passage, Result<HttpReply> reply, bool isTruthful)
{
    if (!passage->flow.isWaiting())
        return;
    m_journal.note(u"answer to %1: %2"_s.arg(passage->call.number).arg(reply ? reply->status : -1));
    passage->call.reply = std::move(reply);
    passage->call.isTruthful = isTruthful;
    passage->flow.resume();
}

/// Passes also while the machine is suspended: an answer then waits for it, as far as anybody can tell.
void SimulatedNetwork::later(Clock::duration pause, std::function<void()> happens)
{
    m_clock.startAlarm(pause, std::move(happens));
}

HttpReply SimulatedNetwork::somebodyElse()
{
    static const std::array kReplies {
        HttpReply {200, "<!DOCTYPE html><title>Sign in</title>"},
        HttpReply {302, {}},
        HttpReply {511, "<html>"},
        HttpReply {500, R"({"ok":false})"},
        HttpReply {503, {}},
        HttpReply {429, {}},
        HttpReply {401, {}},
        HttpReply {204, {}},
        HttpReply {200, {}},
        HttpReply {200, "{}"},
        HttpReply {200, R"({"ok":true,"data":null})"},
        HttpReply {200, R"({"ok":true,"data":[1e999]})"},
        HttpReply {200, "\xff\xfe"},
    };
    return m_chance.pick(kReplies);
}

/// Nothing that could be taken for the answer.
QByteArray SimulatedNetwork::garbled(QByteArray body)
{
    switch (m_chance.below(3)) {
    case 0:
        return body.replace("\"data\":", "\"date\":");
    case 1:
        return body.replace(":", ":[").replace(",", "],");
    default:
        return body.replace("}", "");
    }
}

} // namespace orvella::simulation
