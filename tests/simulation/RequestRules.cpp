#include "simulation/RequestRules.h"

#include "api/Endpoints.h"
#include "simulation/RequestBody.h"
#include "simulation/SimulatedDesktop.h"
#include "simulation/SimulatedKeyring.h"

namespace orvella::simulation {

using namespace Qt::Literals::StringLiterals;

RequestRules::RequestRules(const World& world, const ViewerSettings& settings)
    : m_world(world)
    , m_settings(settings)
{
}

void RequestRules::sent(const SimulatedNetwork::Call& call)
{
    checkPrivacy(call);
    checkToken(call);
}

void RequestRules::checkPrivacy(const SimulatedNetwork::Call& call)
{
    const RequestBody body(call.body);
    const bool isAllowed = !m_settings.anonymousMode && m_settings.appSignalConsent
        && (m_settings.ageConfirmed || m_settings.isFoundConsentAllowed);
    m_world.expect(body.length(u"categories"_s) == 0 || isAllowed, u"Categories are sent that the viewer keeps."_s);
    m_world.expect(body.number(u"rawAppCount"_s) == 0 || isAllowed,
        u"The number of applications is sent that the viewer keeps."_s);
    for (const auto& key : {u"anonymousMode"_s, u"appSignalConsent"_s, u"autoOpenAds"_s}) {
        if (call.path == endpoints::kSessionStart || !call.body.contains(key))
            continue;
        const bool wanted = key == u"anonymousMode" ? m_settings.anonymousMode
            : key == u"appSignalConsent"            ? m_settings.appSignalConsent
                                                    : m_settings.autoOpenAds;
        m_world.expect(body.flag(key) == wanted, u"A setting is sent as it is not: "_s + key);
    }
    const auto mark = QByteArray(SimulatedDesktop::kApplicationMark.data());
    m_world.expect(!call.request.body.contains(mark) && !call.request.url.toEncoded().contains(mark),
        u"The name of an application is sent."_s);
}

void RequestRules::checkToken(const SimulatedNetwork::Call& call)
{
    const auto& keyring = m_world.keyring;
    std::optional<QByteArray> token;
    for (const auto& [name, value] : call.request.headers) {
        if (name == "authorization")
            token = value;
    }
    if (call.path == endpoints::kRegister) {
        m_world.expect(!token, u"A registration carries a token."_s);
        m_world.expect(keyring.hasFoundNothing(), u"A device is registered although there is a token."_s);
    } else if (token) {
        m_world.expect(token->startsWith("Bearer ") && keyring.knows(token->sliced(7)),
            u"A request carries something else than the token."_s);
    } else {
        m_world.expect(!keyring.knowsAny() || keyring.hasFoundNothing(), u"A request lacks the token."_s);
    }
}

} // namespace orvella::simulation
