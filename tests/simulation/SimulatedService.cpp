#include "simulation/SimulatedService.h"

#include "api/Endpoints.h"
#include "support/FakeTransport.h"
#include "support/RecordJson.h"
#include "support/Samples.h"

#include <algorithm>
#include <array>
#include <limits>

namespace orvella::simulation {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kCreatives = 6;

template <WireRecord T> HttpReply success(const T& record)
{
    return {200, FakeTransport::envelope(toJson(record))};
}

HttpReply refusal(int status)
{
    return {status, R"({"ok":false,"error":"refused"})"};
}

QString text(const Json::Object& body, const QString& key)
{
    const auto found = body.find(key);
    const auto* const value = found == body.end() ? nullptr : found->second.string();
    return value ? *value : QString();
}

std::optional<QByteArray> tokenOf(const HttpRequest& request)
{
    for (const auto& [name, value] : request.headers) {
        if (name == "authorization")
            return value.startsWith("Bearer ") ? value.sliced(7) : QByteArray();
    }
    return std::nullopt;
}

} // namespace

SimulatedService::SimulatedService(Clock& clock, Chance& chance, Journal& journal)
    : m_clock(clock)
    , m_chance(chance)
    , m_journal(journal)
    , m_scarcity(chance.pick(std::array {1, 3, 10, 40}))
{
    for (int number = 0; number < kCreatives; ++number)
        m_creatives.push_back(newCreative(number));
}

HttpReply SimulatedService::answer(const HttpRequest& request)
{
    const auto path = request.url.path();
    if (path == endpoints::kRegister)
        return registerDevice();
    const auto token = tokenOf(request);
    if (!token || !m_tokens.contains(*token))
        return refusal(401);
    if (path == endpoints::kHeartbeat || path == endpoints::kPreferences)
        return success(EmptyPayload());
    if (path == endpoints::kWallet)
        return success(m_wallet);
    if (path == endpoints::kAdsAvailable)
        return available();
    const auto json = Json::parse(request.body);
    const auto body = json && json->object() ? *json->object() : Json::Object();
    if (path == endpoints::kSessionStart)
        return startSession(body);
    if (path == endpoints::kSessionComplete)
        return complete(body);
    if (path == endpoints::kClick)
        return click(body);
    m_journal.broken(u"A call is made that the service does not have: "_s + path);
    return refusal(404);
}

void SimulatedService::changeLink()
{
    m_wallet.linked = !m_wallet.linked;
    m_journal.note(m_wallet.linked ? u"service: linked"_s : u"service: not linked"_s);
}

void SimulatedService::settleMoney()
{
    auto& wallet = m_wallet.wallet;
    wallet.paidCents += std::exchange(wallet.availableCents, 0);
    wallet.availableCents = std::exchange(wallet.pendingCents, 0);
    m_journal.note(u"service: money settled"_s);
}

QByteArray SimulatedService::issueToken()
{
    m_tokens.append(QByteArray(kTokenMark.data()) + QByteArray::number(m_tokens.size() + 1));
    return m_tokens.last();
}

HttpReply SimulatedService::registerDevice()
{
    const auto token = issueToken();
    m_journal.note(u"service: device %1 registered"_s.arg(m_tokens.size()));
    return success(DeviceRegistration {u"device-%1"_s.arg(m_tokens.size()), Secret(token), u"KX4M-9TQ2"_s,
        u"https://service.test/activate?code=KX4M-9TQ2"_s, newPace().value_or(300)});
}

HttpReply SimulatedService::available()
{
    AvailabilityResponse response {.available = m_chance.oneIn(2), .pollSeconds = newPace(), .ad = {}};
    if (m_chance.oneIn(m_scarcity))
        response.ad = m_chance.pick(m_creatives);
    return success(response);
}

std::optional<qint64> SimulatedService::newPace()
{
    static constexpr std::array<qint64, 9> kOdd {
        std::numeric_limits<qint64>::min(), -1, 0, 59, 61, 899, 901, 86'400, std::numeric_limits<qint64>::max()};
    static constexpr std::array<qint64, 6> kUsual {60, 120, 300, 300, 600, 900};
    if (m_chance.oneIn(3))
        return std::nullopt;
    return m_chance.oneIn(10) ? m_chance.pick(kOdd) : m_chance.pick(kUsual);
}

AvailableAd SimulatedService::newCreative(int number)
{
    auto ad = anAd();
    ad.creativeId = u"creative-%1"_s.arg(number);
    ad.campaignId = u"campaign-%1"_s.arg(number / 2);
    ad.requiredSeconds = m_chance.oneIn(12) ? m_chance.between(-1, 0) : m_chance.between(1, 30);
    ad.viewerEarnCents = m_chance.between(0, 40);
    ad.viewerEarnCentsExact.reset();
    if (m_chance.oneIn(2))
        ad.viewerEarnCentsExact = static_cast<double>(ad.viewerEarnCents) + 0.25;
    if (m_chance.oneIn(8))
        ad.targetUrl = m_chance.oneIn(2) ? u"javascript:alert(1)"_s : u"not an address"_s;
    return ad;
}

HttpReply SimulatedService::startSession(const Json::Object& body)
{
    const auto found = std::ranges::find(m_creatives, text(body, u"creativeId"_s), &AvailableAd::creativeId);
    if (found == m_creatives.end()) {
        m_journal.broken(u"A session is opened for an ad that the service does not have."_s);
        return refusal(404);
    }
    constexpr std::size_t kRemembered = 50;
    if (m_sessions.size() > kRemembered)
        m_sessions.clear();
    const auto id = u"session-%1"_s.arg(++m_lastSession);
    const auto& ad = *found;
    m_sessions.insert_or_assign(id, Session {ad, m_clock.now(), m_run, {}});
    return success(AdSession {id, ad.requiredSeconds, u"2030-01-01T00:00:15Z"_s, ad.targetUrl, ad.viewerEarnCents});
}

HttpReply SimulatedService::complete(const Json::Object& body)
{
    const auto found = m_sessions.find(text(body, u"sessionId"_s));
    if (found == m_sessions.end()) {
        m_journal.broken(u"A session is completed that the service has not opened."_s);
        return refusal(404);
    }
    auto& session = found->second;
    if (m_clock.now() - session.started < std::chrono::seconds(session.ad.requiredSeconds)) {
        m_journal.broken(u"A session is completed before its seconds have passed."_s);
        return refusal(409);
    }
    if (!session.verdict && m_chance.oneIn(10)) {
        session.verdict.emplace().reason = u"capped"_s;
    } else if (!session.verdict) {
        session.verdict = aCompletion();
        session.verdict->viewerEarnCents = session.ad.viewerEarnCents;
        session.verdict->viewerEarnCentsExact = session.ad.viewerEarnCentsExact;
        m_wallet.wallet.pendingCents += session.ad.viewerEarnCents;
        m_wallet.wallet.lifetimeCents += session.ad.viewerEarnCents;
        ++m_creditedViews;
        if (session.run != m_run)
            ++m_lateCredits;
        m_journal.note(u"service: %1 credited with %2 cents"_s.arg(found->first).arg(session.ad.viewerEarnCents));
    }
    return success(*session.verdict);
}

HttpReply SimulatedService::click(const Json::Object& body)
{
    const auto found = m_sessions.find(text(body, u"sessionId"_s));
    if (found == m_sessions.end())
        return refusal(404);
    const auto& target = found->second.ad.targetUrl;
    return success(ClickResponse {target.startsWith(u"https:"_s) ? target + u"?click="_s + found->first : target});
}

} // namespace orvella::simulation
