#include "api/APIClient.h"

#include "api/Endpoints.h"
#include "api/ThisComputer.h"
#include "platform/Device.h"
#include "platform/Platform.h"
#include "platform/SettingsStore.h"
#include "platform/ViewerLocale.h"

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

QUrl serviceAddress(const SettingsStore& settings)
{
    const auto text = settings.string(u"apiBaseURL"_s).value_or(QStringLiteral(ORVELLA_SERVICE_URL));
    const QUrl address(text, QUrl::StrictMode);
    const bool isWeb = address.scheme() == u"https" || address.scheme() == u"http";
    if (!address.isValid() || !isWeb || address.host().isEmpty())
        qFatal("The address of the service, the setting apiBaseURL, is not a valid web address.");
    // The token goes there, and who pays whom.
    if (address.scheme() == u"http" && !isThisComputer(address.host()))
        qFatal("The address of the service, the setting apiBaseURL, may be http on this computer only, else https.");
    return address;
}

APIClient::Body ofSession(QString sessionId)
{
    return [sessionId = std::move(sessionId)] { return Json::Object {{u"sessionId"_s, sessionId}}; };
}

} // namespace

Json::Object APIClient::Preferences::members() const
{
    return {
        {u"anonymousMode"_s, anonymousMode},
        {u"appSignalConsent"_s, appSignalConsent},
        {u"autoOpenAds"_s, autoOpenAds},
    };
}

APIClient::APIClient(const Platform& platform, Transport& transport)
    : m_baseURL(serviceAddress(platform.settings))
    , m_keychain(platform.secrets)
    , m_transport(transport)
    , m_device(platform.device)
    , m_locale(platform.locale)
{
}

QCoro::Task<Result<DeviceRegistration>> APIClient::registerDevice(Preferences preferences, std::stop_token stop)
{
    auto body = preferences.members();
    body.merge(Json::Object {
        {u"deviceName"_s, m_device.name().value_or(u"Mac"_s)},
        {u"appVersion"_s, m_device.applicationVersion().value_or(u"0.1.0"_s)},
        {u"language"_s, language()},
    });
    return post<DeviceRegistration>(
        endpoints::kRegister, [body] { return body; }, Authorization::none, std::move(stop));
}

QCoro::Task<Result<EmptyPayload>> APIClient::preferences(std::function<Preferences()> current, std::stop_token stop)
{
    const auto body = [current = std::move(current)] { return current().members(); };
    return post<EmptyPayload>(endpoints::kPreferences, body, Authorization::deviceToken, std::move(stop));
}

QCoro::Task<Result<AdSession>> APIClient::startSession(AvailableAd ad, bool anonymousMode, std::stop_token stop)
{
    const Json::Object body {
        {u"campaignId"_s, ad.campaignId},
        {u"creativeId"_s, ad.creativeId},
        {u"anonymousMode"_s, anonymousMode},
        {u"language"_s, ad.language},
        {u"matchedCategories"_s, ad.matchedCategories},
    };
    return post<AdSession>(
        endpoints::kSessionStart, [body] { return body; }, Authorization::deviceToken, std::move(stop));
}

QCoro::Task<Result<CompletionResponse>> APIClient::complete(QString sessionId, std::stop_token stop)
{
    return post<CompletionResponse>(
        endpoints::kSessionComplete, ofSession(std::move(sessionId)), Authorization::deviceToken, std::move(stop));
}

QCoro::Task<Result<ClickResponse>> APIClient::click(QString sessionId, std::stop_token stop)
{
    return post<ClickResponse>(
        endpoints::kClick, ofSession(std::move(sessionId)), Authorization::deviceToken, std::move(stop));
}

QString APIClient::language() const
{
    return m_locale.languageCode().value_or(u"en"_s);
}

QCoro::Task<> APIClient::run(
    std::shared_ptr<ServiceCallBase> call, Body body, Authorization authorization, std::stop_token stop)
{
    if (authorization == Authorization::deviceToken) {
        auto token = co_await m_keychain.deviceToken(stop);
        if (stop.stop_requested())
            co_return;
        // Without a token the request goes out as it is, and the service decides.
        if (token)
            call->authorize(*std::move(token));
    }
    if (body)
        call->setBody(body());
    co_await m_transport.run(call, stop);
}

} // namespace orvella
