#include "core/AppState.h"

#include "api/Endpoints.h"
#include "platform/ViewerLocale.h"

#include <algorithm>

namespace orvella {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kFirstPollSeconds = 300;
constexpr qint64 kShortestPollSeconds = 60;
constexpr qint64 kLongestPollSeconds = 900;
/// How long a poll loop without its state waits.
constexpr auto kOrphanInterval = 300s;
/// How long the network takes to come back after a suspension.
constexpr auto kNetworkReturn = 10s;
/// The clocks are read one after the other, so a difference of less is none.
constexpr auto kShortestSuspension = 1s;

} // namespace

AppState::AppState(const Platform& platform, Transport& transport)
    : m_platform(platform)
    , m_api(platform, transport)
    , m_keychain(platform.secrets)
    , m_pollSeconds(kFirstPollSeconds)
    , m_walletQuestions(platform.clock)
    , m_suppressedCreativeIds(platform.clock)
    , m_loginItem(platform.loginItem, platform.settings, launchAtLogin, lastError)
{
}

AppState::~AppState()
{
    // Deliberate: the loop could go on without its state, but the clock and the transport go soon after.
    m_pollTask.request_stop();
    m_lifetime.request_stop();
}

QCoro::Task<> AppState::bootstrap()
{
    const auto stop = m_lifetime.get_token();
    const auto token = co_await m_keychain.deviceToken(stop);
    if (stop.stop_requested())
        co_return;
    if (!token) {
        const auto registered = co_await registerDevice(stop);
        if (stop.stop_requested())
            co_return;
        if (!registered)
            co_return;
    }
    co_await refreshWallet(stop);
    if (stop.stop_requested())
        co_return;
    co_await heartbeat(stop);
    if (stop.stop_requested())
        co_return;
    startPolling();
    // Deliberate: a start counts as a success once the poll loop runs, whatever the wallet and the heartbeat said.
    lastError = std::nullopt;
}

QCoro::Task<bool> AppState::registerDevice(std::stop_token stop)
{
    const auto registration = co_await m_api.registerDevice(preferences(), stop);
    if (stop.stop_requested())
        co_return false;
    if (!registration && registration.error().isCancellation())
        co_return false;
    if (!registration) {
        // Deliberate: nothing tries again in this run.
        lastError = registration.error().description;
        statusTitle = u"OFF"_s;
        co_return false;
    }
    co_await m_keychain.deleteToken(Keychain::kService);
    if (stop.stop_requested())
        co_return false;
    co_await m_keychain.writeToken(registration->deviceToken, Keychain::kService, stop);
    if (stop.stop_requested())
        co_return false;
    activationCode = registration->activationCode;
    verificationUri = registration->verificationUri;
    setPollSeconds(registration->pollSeconds);
    co_return true;
}

void AppState::startPolling()
{
    m_pollTask.request_stop();
    m_pollTask = std::stop_source();
    QMetaObject::invokeMethod(
        this, [this, stop = m_pollTask.get_token()] { poll(this, m_platform.clock, stop); }, Qt::QueuedConnection);
}

QCoro::Task<> AppState::poll(QPointer<AppState> self, Clock& clock, std::stop_token stop)
{
    while (!stop.stop_requested()) {
        if (self)
            co_await self->heartbeat(stop);
        if (stop.stop_requested())
            co_return;
        if (self)
            co_await self->pollForAd(stop);
        if (stop.stop_requested())
            co_return;
        // A wallet that could not be had, at the start or after an ad, is made up for once the service answers again.
        if (self && self->m_walletQuestions.areOpen() && !self->lastError())
            co_await self->refreshWallet(stop);
        if (stop.stop_requested())
            co_return;
        const auto pause = self ? std::chrono::seconds(self->m_pollSeconds) : kOrphanInterval;
        const auto suspended = clock.suspended();
        co_await clock.sleepThroughSuspension(pause, stop);
        if (stop.stop_requested())
            co_return;
        // It may have woken just now, or a while ago: nobody tells when.
        if (clock.suspended() - suspended >= kShortestSuspension)
            co_await clock.sleep(kNetworkReturn, stop);
    }
}

QCoro::Task<> AppState::heartbeat()
{
    return heartbeat(m_lifetime.get_token());
}

QCoro::Task<> AppState::heartbeat(std::stop_token stop)
{
    const auto body = [this] {
        const auto categories = currentConsentedCategories();
        auto members = availabilityBody(categories);
        members.insert_or_assign(u"rawAppCount"_s, categories.rawAppCount);
        return members;
    };
    const auto answer =
        co_await m_api.post<EmptyPayload>(endpoints::kHeartbeat, body, APIClient::Authorization::deviceToken, stop);
    if (stop.stop_requested())
        co_return;
    noteOutcome(answer);
}

QCoro::Task<> AppState::pollForAd()
{
    return pollForAd(m_lifetime.get_token());
}

QCoro::Task<> AppState::pollForAd(std::stop_token stop)
{
    const auto body = [this] { return availabilityBody(currentConsentedCategories()); };
    const auto answer = co_await m_api.post<AvailabilityResponse>(
        endpoints::kAdsAvailable, body, APIClient::Authorization::deviceToken, stop);
    if (stop.stop_requested())
        co_return;
    if (answer)
        offer(*answer);
    noteOutcome(answer);
}

void AppState::offer(const AvailabilityResponse& response)
{
    if (response.pollSeconds)
        setPollSeconds(*response.pollSeconds);
    // Deliberate: the flag `available` is not asked, only the presence of an ad decides.
    if (response.ad && !isSuppressed(*response.ad)) {
        availableAd = response.ad;
        statusTitle = kAdTitle;
    } else {
        availableAd = std::nullopt;
        statusTitle = balanceTitle();
    }
}

APIClient::Preferences AppState::preferences() const
{
    return {anonymousMode(), appSignalConsent(), autoOpenAds()};
}

Json::Object AppState::availabilityBody(const AppSignalClassifier::Categories& categories) const
{
    auto body = preferences().members();
    body.merge(Json::Object {
        {u"language"_s, m_api.language()},
        {u"categories"_s, categories.keys},
    });
    return body;
}

AppSignalClassifier::Categories AppState::currentConsentedCategories() const
{
    if (anonymousMode() || !appSignalConsent())
        return {};
    return AppSignalClassifier::currentCategories(m_platform.applications);
}

bool AppState::isSuppressed(const AvailableAd& ad)
{
    return m_suppressedCreativeIds.isSuppressed(ad.creativeId);
}

void AppState::suppress(const AvailableAd& ad)
{
    m_suppressedCreativeIds.suppress(ad.creativeId);
}

QCoro::Task<> AppState::refreshWallet()
{
    return refreshWallet(m_lifetime.get_token());
}

QCoro::Task<> AppState::refreshWallet(std::stop_token stop)
{
    const auto question = m_walletQuestions.ask();
    const auto answer = co_await m_api.get<WalletResponse>(endpoints::kWallet, stop);
    if (stop.stop_requested())
        co_return;
    if (!answer)
        m_walletQuestions.failed(question);
    else if (m_walletQuestions.answered(question))
        showWallet(*answer);
    noteOutcome(answer);
}

void AppState::showWallet(const WalletResponse& response)
{
    linked = response.linked;
    availableCents = response.wallet.availableCents;
    pendingCents = response.wallet.pendingCents;
    paidCents = response.wallet.paidCents;
    lifetimeCents = response.wallet.lifetimeCents;
    statusTitle = availableAd() ? QString(kAdTitle) : balanceTitle();
}

void AppState::doubtWallet()
{
    m_walletQuestions.doubt();
}

void AppState::finishAd(const AvailableAd& ad)
{
    suppress(ad);
    if (availableAd() && availableAd()->creativeId == ad.creativeId)
        availableAd = std::nullopt;
    // Deliberate: also while a different ad stays on offer; the next poll brings "AD" back.
    statusTitle = balanceTitle();
}

void AppState::anonymousModeAssigned()
{
    // Consent without a confirmed age may have been found in the settings: it ends with the first choice of the viewer.
    if (appSignalConsent() && (anonymousMode() || !ageConfirmed()))
        appSignalConsent = false;
    anonymousMode.store();
    startSendingPreferences();
}

void AppState::appSignalConsentAssigned()
{
    if (appSignalConsent() && !ageConfirmed()) {
        // The refusal is what is stored and sent, by this same rule.
        appSignalConsent = false;
        return;
    }
    appSignalConsent.store();
    startSendingPreferences();
}

void AppState::ageConfirmedAssigned()
{
    // Deliberate: the confirmation itself is never sent.
    ageConfirmed.store();
    if (!ageConfirmed() && appSignalConsent())
        appSignalConsent = false;
}

void AppState::autoOpenAdsAssigned()
{
    autoOpenAds.store();
    startSendingPreferences();
}

void AppState::startSendingPreferences()
{
    QMetaObject::invokeMethod(this, [this] { sendPreferences(); }, Qt::QueuedConnection);
}

QCoro::Task<> AppState::sendPreferences()
{
    return sendPreferences(m_lifetime.get_token());
}

QCoro::Task<> AppState::sendPreferences(std::stop_token stop)
{
    const auto current = [this] { return preferences(); };
    const auto answer = co_await m_api.preferences(current, stop);
    if (stop.stop_requested())
        co_return;
    noteOutcome(answer);
}

void AppState::setLaunchAtLogin(bool enabled)
{
    m_loginItem.set(enabled);
}

void AppState::refreshLaunchAtLogin()
{
    m_loginItem.refresh();
}

template <class T> void AppState::noteOutcome(const Result<T>& answer)
{
    if (answer)
        lastError = std::nullopt;
    else if (!answer.error().isCancellation())
        lastError = answer.error().description;
}

void AppState::setPollSeconds(qint64 seconds)
{
    m_pollSeconds = std::clamp(seconds, kShortestPollSeconds, kLongestPollSeconds);
}

QString AppState::balanceTitle() const
{
    return m_platform.locale.usDollars(availableCents());
}

} // namespace orvella
