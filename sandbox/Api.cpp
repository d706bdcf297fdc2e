#include "sandbox/Api.h"

#include "sandbox/CallBody.h"
#include "sandbox/Printable.h"

#include <algorithm>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

Reply jsonReply(int status, Json::Object members)
{
    auto text = Json(std::move(members)).serialise();
    if (!text)
        return Api::refusal(500, u"the answer could not be written"_s);
    return {status, "application/json", *std::move(text), {}};
}

std::unexpected<Reply> refused(int status, const QString& reason)
{
    return std::unexpected(Api::refusal(status, reason));
}

/// The token of the header "authorization: Bearer <token>".
std::optional<Secret> bearerToken(const Request& request)
{
    static const QByteArray kScheme = "Bearer ";
    const auto header = request.headers.value("authorization");
    if (!header.startsWith(kScheme))
        return std::nullopt;
    return Secret(header.sliced(kScheme.size()));
}

/// What is wrong with the request apart from its body, or nothing.
std::optional<Reply> transportProblem(const CallRoute& route, const Request& request)
{
    if (request.method != (route.isPost ? Request::Method::post : Request::Method::get)) {
        auto reply = Api::refusal(405, u"the method is not the one of this call"_s);
        reply.headers.emplace_back("allow", route.isPost ? "POST" : "GET");
        return reply;
    }
    if (!request.query.isEmpty())
        return Api::refusal(400, u"the call has no query"_s);
    if (route.isPost && request.headers.value("content-type") != "application/json")
        return Api::refusal(415, u"the content type is not application/json"_s);
    if (!route.isPost && (!request.body.isEmpty() || request.headers.contains("content-type")))
        return Api::refusal(400, u"the call has no body"_s);
    if (!route.isAuthorized && request.headers.contains("authorization"))
        return Api::refusal(400, u"the call is made without a token"_s);
    return std::nullopt;
}

} // namespace

Api::Api(const Campaigns& campaigns, Devices& devices, Ledger& ledger, const ServiceTime& time, qint64 pollSeconds,
    QString origin, Announcer announce)
    : m_campaigns(campaigns)
    , m_devices(devices)
    , m_ledger(ledger)
    , m_time(time)
    , m_pollSeconds(pollSeconds)
    , m_origin(std::move(origin))
    , m_announce(std::move(announce))
{
}

Reply Api::refusal(int status, const QString& reason)
{
    Json::Object members;
    members.emplace(u"ok"_s, false);
    members.emplace(u"error"_s, reason);
    return jsonReply(status, std::move(members));
}

Reply Api::answer(const CallRoute& route, const Request& request)
{
    if (auto problem = transportProblem(route, request))
        return *std::move(problem);
    Device device;
    if (route.isAuthorized) {
        const auto token = bearerToken(request);
        auto known = token ? m_devices.findByToken(*token) : std::nullopt;
        if (!known) {
            auto reply = refusal(401, u"the token is missing or unknown"_s);
            reply.headers.emplace_back("www-authenticate", "Bearer");
            return reply;
        }
        device = *std::move(known);
        device.seenAt = m_time.now();
    }
    auto body = route.isPost ? Json::parse(request.body) : Json();
    if (!body)
        return refusal(400, u"the body is not JSON"_s);
    auto data = dispatch(route.call, *body, device);
    if (!data)
        return std::move(data).error();
    Json::Object envelope;
    envelope.emplace(u"ok"_s, true);
    envelope.emplace(u"data"_s, *std::move(data));
    return jsonReply(200, std::move(envelope));
}

Api::Answer Api::dispatch(Call call, const Json& body, Device& device)
{
    switch (call) {
    case Call::registration:
        return registerDevice(body);
    case Call::heartbeat:
        return heartbeat(body, device);
    case Call::preferences:
        return preferences(body, device);
    case Call::available:
        return available(body, device);
    case Call::start:
        return start(body, device);
    case Call::complete:
        return complete(body, device);
    case Call::click:
        return click(body, device);
    case Call::wallet:
        return wallet(device);
    }
    return refused(500, u"the call is not known"_s);
}

Api::Answer Api::registerDevice(const Json& body)
{
    const auto read = CallBody::registration(body);
    if (!read)
        return refused(400, read.error());
    const auto registered = m_devices.add(*read, m_time.now());
    const auto& device = registered.device;
    const auto verificationUri = m_origin + u"/activate?code="_s + device.activationCode;
    m_announce(printable(device.name) + u" registered; link it at "_s + verificationUri);
    Json::Object data;
    data.emplace(u"deviceId"_s, device.id);
    data.emplace(u"deviceToken"_s, QString::fromLatin1(registered.token.reveal()));
    data.emplace(u"activationCode"_s, device.activationCode);
    data.emplace(u"verificationUri"_s, verificationUri);
    data.emplace(u"pollSeconds"_s, m_pollSeconds);
    return data;
}

Api::Answer Api::heartbeat(const Json& body, Device& device)
{
    if (const auto problem = CallBody::heartbeat(body, device); !problem.isEmpty())
        return refused(400, problem);
    m_devices.update(device);
    return Json::Object();
}

Api::Answer Api::preferences(const Json& body, Device& device)
{
    if (const auto problem = CallBody::preferences(body, device); !problem.isEmpty())
        return refused(400, problem);
    m_devices.update(device);
    return Json::Object();
}

Api::Answer Api::available(const Json& body, Device& device)
{
    if (const auto problem = CallBody::availability(body, device); !problem.isEmpty())
        return refused(400, problem);
    m_devices.update(device);
    const auto offer = chooseOffer(m_campaigns, {device.language, device.categories}, m_ledger.history(device.id));
    Json::Object data;
    data.emplace(u"available"_s, offer.has_value());
    data.emplace(u"pollSeconds"_s, m_pollSeconds);
    if (offer) {
        m_ledger.offer(device.id, offer->creative->id, offer->matchedCategories);
        data.emplace(u"ad"_s, recordOf(*offer));
    }
    return data;
}

Api::Answer Api::start(const Json& body, const Device& device)
{
    const auto read = CallBody::start(body);
    if (!read)
        return refused(400, read.error());
    const auto* const campaign = m_campaigns.find(read->campaignId);
    if (!campaign)
        return refused(404, u"there is no such campaign"_s);
    const auto creative = std::ranges::find(campaign->creatives, read->creativeId, &Creative::id);
    if (creative == campaign->creatives.end())
        return refused(404, u"the campaign has no such creative"_s);
    if (read->language != creative->language)
        return refused(400, u"language is not the language of the ad"_s);
    const auto offered = m_ledger.offered(device.id, creative->id);
    if (!offered)
        return refused(409, u"the ad was not offered to this device"_s);
    if (read->matchedCategories != *offered)
        return refused(400, u"matchedCategories is not what was offered"_s);

    const auto session =
        m_ledger.start(device.id, {campaign, &*creative, read->matchedCategories}, read->anonymousMode, m_time.now());
    Json::Object data;
    data.emplace(u"sessionId"_s, session.id);
    data.emplace(u"requiredSeconds"_s, session.requiredSeconds);
    data.emplace(u"eligibleAfter"_s, isoText(session.eligibleAfter()));
    data.emplace(u"targetUrl"_s, landingPage(campaign->id));
    data.emplace(u"viewerEarnCents"_s, campaign->viewerEarn.wholeCents());
    return data;
}

Api::Answer Api::complete(const Json& body, const Device& device)
{
    const auto sessionId = CallBody::session(body);
    if (!sessionId)
        return refused(400, sessionId.error());
    const auto verdict = m_ledger.complete(device.id, *sessionId, m_time.now());
    if (!verdict)
        return refused(404, u"the device has no such session"_s);
    if (verdict->isNew)
        m_announce(printable(device.name) + u" earned "_s + verdict->viewerEarn.dollars());
    Json::Object data;
    data.emplace(u"completed"_s, verdict->completed);
    data.emplace(u"reason"_s, verdict->reason);
    data.emplace(u"viewerEarnCents"_s, verdict->viewerEarn.wholeCents());
    data.emplace(u"platformFeeCents"_s, verdict->platformFee.wholeCents());
    data.emplace(u"advertiserChargeCents"_s, verdict->advertiserCharge.wholeCents());
    data.emplace(u"viewerEarnCentsExact"_s, verdict->viewerEarn.exactCents());
    data.emplace(u"platformFeeCentsExact"_s, verdict->platformFee.exactCents());
    return data;
}

Api::Answer Api::click(const Json& body, const Device& device)
{
    const auto sessionId = CallBody::session(body);
    if (!sessionId)
        return refused(400, sessionId.error());
    const auto campaign = m_ledger.click(device.id, *sessionId);
    if (!campaign)
        return refused(404, u"the device has no such session"_s);
    Json::Object data;
    data.emplace(u"targetUrl"_s, landingPage(*campaign));
    return data;
}

Api::Answer Api::wallet(const Device& device)
{
    const auto balances =
        device.isLinked() ? m_ledger.balancesOfViewer(device.viewer) : m_ledger.balancesOfDevice(device.id);
    Json::Object wallet;
    wallet.emplace(u"pendingCents"_s, balances.pending.wholeCents());
    wallet.emplace(u"availableCents"_s, balances.available.wholeCents());
    wallet.emplace(u"paidCents"_s, balances.paid.wholeCents());
    wallet.emplace(u"lifetimeCents"_s, balances.lifetime.wholeCents());
    Json::Object data;
    data.emplace(u"linked"_s, device.isLinked());
    data.emplace(u"wallet"_s, std::move(wallet));
    return data;
}

QString Api::landingPage(const QString& campaignId) const
{
    return m_origin + u"/advertiser/"_s + campaignId;
}

Json::Object Api::recordOf(const Offer& offer) const
{
    const auto& campaign = *offer.campaign;
    Json::Array matched;
    for (const auto& category : offer.matchedCategories)
        matched.emplace_back(category);
    Json::Object record;
    record.emplace(u"campaignId"_s, campaign.id);
    record.emplace(u"creativeId"_s, offer.creative->id);
    record.emplace(u"advertiserName"_s, campaign.advertiserName);
    record.emplace(u"body"_s, offer.creative->body);
    record.emplace(u"ctaLabel"_s, offer.creative->ctaLabel);
    record.emplace(u"targetUrl"_s, landingPage(campaign.id));
    record.emplace(u"language"_s, offer.creative->language);
    record.emplace(u"requiredSeconds"_s, campaign.requiredSeconds);
    record.emplace(u"matchedCategories"_s, std::move(matched));
    record.emplace(u"advertiserChargeCents"_s, campaign.advertiserCharge.wholeCents());
    record.emplace(u"viewerEarnCents"_s, campaign.viewerEarn.wholeCents());
    record.emplace(u"platformFeeCents"_s, campaign.platformFee().wholeCents());
    record.emplace(u"viewerEarnCentsExact"_s, campaign.viewerEarn.exactCents());
    record.emplace(u"platformFeeCentsExact"_s, campaign.platformFee().exactCents());
    return record;
}

} // namespace orvella::sandbox
