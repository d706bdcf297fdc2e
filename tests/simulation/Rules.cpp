#include "simulation/Rules.h"

#include "api/Endpoints.h"
#include "simulation/ProgramClock.h"
#include "simulation/SimulatedDesktop.h"
#include "simulation/SimulatedKeyring.h"
#include "simulation/SimulatedService.h"

#include <QApplication>

#include <algorithm>

namespace orvella::simulation {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kRest = 300s;
constexpr auto kGracePeriod = 3s;
constexpr auto kBetweenOpenings = 120s;
/// What the loop takes beyond its pause at most, where nothing holds it up: the wait for the network, and one tick.
constexpr auto kSlack = 11s;

template <class T> std::optional<T> record(const SimulatedNetwork::Call& call)
{
    if (!call.isTruthful || !*call.reply || (*call.reply)->status != 200)
        return std::nullopt;
    auto envelope = decodeRecord<APIResponse<T>>((*call.reply)->body);
    return envelope ? std::optional(std::move(envelope->data)) : std::nullopt;
}

bool isSuccess(const SimulatedNetwork::Call& call)
{
    if (!*call.reply || (*call.reply)->status / 100 != 2)
        return false;
    // An empty record is read from whatever has the shape of an answer.
    return decodeRecord<APIResponse<EmptyPayload>>((*call.reply)->body).has_value();
}

bool flag(const Json::Object& body, const QString& key)
{
    const auto found = body.find(key);
    return found != body.end() && found->second.boolean() && *found->second.boolean();
}

qint64 length(const Json::Object& body, const QString& key)
{
    const auto found = body.find(key);
    return found == body.end() || !found->second.array() ? 0 : std::ssize(*found->second.array());
}

QString text(const Json::Object& body, const QString& key)
{
    const auto found = body.find(key);
    return found == body.end() || !found->second.string() ? QString() : *found->second.string();
}

bool isPanel(const QWindow* window)
{
    return window->isVisible() && window->objectName() == u"adPanelWindow";
}

} // namespace

Rules::Rules(World world, const AppState& state, const ViewerSettings& settings, std::function<QByteArray()> readFile)
    : m_world(world)
    , m_state(state)
    , m_readFile(std::move(readFile))
    , m_settings(settings)
    , m_lastCycle(world.clock.now())
    , m_lastSign(world.clock.now())
{
    m_world.network.sent = [this](const auto& call) { sent(call); };
    m_world.network.arrives = [this](const auto& call) { arrives(call); };
}

Rules::~Rules()
{
    expect(m_world.programClock.running() == 0, u"A timer runs on after the end of the program."_s);
    expect(m_world.network.waiting() == 0, u"A request is waited for after the end of the program."_s);
    expect(m_world.keyring.reading() == 0, u"The keyring is waited for after the end of the program."_s);
    expect(QApplication::topLevelWidgets().isEmpty(), u"A window is left after the end of the program."_s);
    const auto nobody = [&journal = m_world.journal](const auto& /*call*/) {
        journal.broken(u"The network is used while the program does not run."_s);
    };
    m_world.network.sent = nobody;
    m_world.network.arrives = nobody;
}

void Rules::afterStep()
{
    checkSettings();
    checkTitle();
    checkMoney();
    checkPanels();
    checkView();
    checkLoop();
    checkError();
    checkPages();
    m_hasViewerActed = false;
}

void Rules::assigns(ViewerSettings::Name name, bool value)
{
    m_settings.assign(name, value);
    m_areSettingsTouched = true;
}

void Rules::dismisses()
{
    if (!m_viewing || !m_viewing->panel)
        return;
    m_viewing->isDismissed = true;
    m_isWalletAllowed = m_isWalletAllowed || (m_viewing->session && !m_viewing->isOver);
    creativeRests(m_viewing->creativeId);
}

QWindow* Rules::panel()
{
    for (auto* const window : QGuiApplication::topLevelWindows()) {
        if (isPanel(window))
            return window;
    }
    return nullptr;
}

void Rules::sent(const SimulatedNetwork::Call& call)
{
    checkPrivacy(call);
    checkToken(call);
    if (call.path == endpoints::kRegister)
        expect(m_world.keyring.hasFoundNothing(), u"A device is registered although there is a token."_s);
    else if (call.path == endpoints::kHeartbeat)
        cycleBegins();
    else if (call.path == endpoints::kAdsAvailable)
        expect(++m_cyclesInFlight == 1 && m_isPolling, u"Two poll loops run."_s);
    else if (call.path == endpoints::kWallet)
        walletRequested();
    else if (call.path == endpoints::kSessionStart)
        sessionRequested(call);
    else if (call.path == endpoints::kSessionComplete)
        completionRequested(call);
}

void Rules::checkPrivacy(const SimulatedNetwork::Call& call)
{
    const auto categories = length(call.body, u"categories"_s);
    const bool isAllowed = !m_settings.anonymousMode && m_settings.appSignalConsent
        && (m_settings.ageConfirmed || m_settings.isFoundConsentAllowed);
    expect(categories == 0 || isAllowed, u"Categories are sent that the viewer keeps."_s);
    const auto found = call.body.find(u"rawAppCount"_s);
    const bool tellsCount = found != call.body.end() && found->second.integer().value_or(0) != 0;
    expect(!tellsCount || isAllowed, u"The number of applications is sent that the viewer keeps."_s);
    for (const auto& key : {u"anonymousMode"_s, u"appSignalConsent"_s, u"autoOpenAds"_s}) {
        if (call.path == endpoints::kSessionStart || !call.body.contains(key))
            continue;
        const bool wanted = key == u"anonymousMode" ? m_settings.anonymousMode
            : key == u"appSignalConsent"            ? m_settings.appSignalConsent
                                                    : m_settings.autoOpenAds;
        expect(flag(call.body, key) == wanted, u"A setting is sent as it is not: "_s + key);
    }
    const auto mark = QByteArray(SimulatedDesktop::kApplicationMark.data());
    expect(!call.request.body.contains(mark) && !call.request.url.toEncoded().contains(mark),
        u"The name of an application is sent."_s);
}

void Rules::checkToken(const SimulatedNetwork::Call& call)
{
    std::optional<QByteArray> token;
    for (const auto& [name, value] : call.request.headers) {
        if (name == "authorization")
            token = value;
    }
    if (call.path == endpoints::kRegister)
        expect(!token, u"A registration carries a token."_s);
    else if (token)
        expect(token->startsWith("Bearer ") && m_world.keyring.knows(token->sliced(7)),
            u"A request carries something else than the token."_s);
    else
        expect(!m_world.keyring.knowsAny() || m_world.keyring.hasFoundNothing(), u"A request lacks the token."_s);
}

void Rules::walletRequested()
{
    if (m_walletsOwed > 0)
        --m_walletsOwed;
    else
        expect(std::exchange(m_isWalletAllowed, false), u"The wallet is asked for without a reason."_s);
    ++m_walletsInFlight;
}

void Rules::sessionRequested(const SimulatedNetwork::Call& call)
{
    auto* const shown = panel();
    expect(shown != nullptr, u"A session is asked for without a panel."_s);
    if (!m_viewing || m_viewing->panel != shown)
        viewBegins(shown, text(call.body, u"creativeId"_s));
    expect(!std::exchange(m_viewing->isSessionRequested, true), u"A view asks for a second session."_s);
    expect(m_viewing->creativeId == text(call.body, u"creativeId"_s), u"The session is not that of the ad shown."_s);
    expect(flag(call.body, u"anonymousMode"_s) == m_viewing->anonymousMode,
        u"The session has not the anonymous mode of its beginning."_s);
}

void Rules::completionRequested(const SimulatedNetwork::Call& call)
{
    expect(m_viewing && m_viewing->session, u"A completion is sent without a session."_s);
    if (!m_viewing || !m_viewing->session)
        return;
    expect(m_viewing->session->sessionId == text(call.body, u"sessionId"_s), u"Another session is completed."_s);
    expect(!m_viewing->isDismissed, u"A view is completed after its dismissal."_s);
    expect(!m_viewing->isCompletionSent, u"A view is completed twice."_s);
    m_viewing->isCompletionSent = true;
}

void Rules::cycleBegins()
{
    // The first heartbeat is that of the start.
    if (++m_heartbeats == 1)
        return;
    expect(m_cyclesInFlight == 0, u"A heartbeat is sent while a poll is under way."_s);
    const bool isFirst = !std::exchange(m_isPolling, true);
    expect(isFirst || m_world.clock.now() - m_lastCycle >= std::chrono::seconds(m_pollSeconds),
        u"The service is asked earlier than it wants to be."_s);
    m_lastCycle = m_world.clock.now();
    loopGivesSign();
}

void Rules::loopGivesSign()
{
    m_lastSign = m_world.clock.now();
    m_lostBeforeSign = m_lostTime;
}

void Rules::arrives(const SimulatedNetwork::Call& call)
{
    const auto& path = call.path;
    if (path == endpoints::kRegister) {
        const auto registration = record<DeviceRegistration>(call);
        m_title = registration ? m_title : Title::off;
        m_pollSeconds = registration ? std::clamp<qint64>(registration->pollSeconds, 60, 900) : m_pollSeconds;
        m_expectsError = m_expectsError || !registration;
    } else if (path == endpoints::kHeartbeat) {
        // The end of the start clears what its calls have left.
        m_expectsError = m_hasStarted && !isSuccess(call);
        m_hasStarted = true;
    } else if (path == endpoints::kPreferences) {
        m_expectsError = !isSuccess(call);
    } else if (path == endpoints::kAdsAvailable) {
        offerArrives(call);
    } else if (path == endpoints::kWallet) {
        walletArrives(call);
    } else if (path == endpoints::kSessionStart) {
        const auto session = record<AdSession>(call);
        if (m_viewing)
            m_viewing->session = session;
        if (!session)
            viewEnds(std::nullopt);
    } else if (path == endpoints::kClick) {
        if (const auto click = record<ClickResponse>(call))
            m_clickTargets = {click->targetUrl};
    } else if (path == endpoints::kSessionComplete) {
        const auto verdict = record<CompletionResponse>(call);
        const bool isPaid = verdict && verdict->completed;
        viewEnds(isPaid
                ? std::optional(verdict->viewerEarnCentsExact.value_or(static_cast<double>(verdict->viewerEarnCents)))
                : std::nullopt);
    }
}

void Rules::offerArrives(const SimulatedNetwork::Call& call)
{
    --m_cyclesInFlight;
    m_lastCycle = m_world.clock.now();
    loopGivesSign();
    const auto response = record<AvailabilityResponse>(call);
    m_expectsError = !response;
    if (!response)
        return;
    // Now that the service answers, what it could not say before is asked again.
    if (isMoneyMissing() || m_failedWalletNumber > m_walletNumber) {
        ++m_walletsOwed;
        m_world.journal.note(u"wallet: to be asked again"_s);
    }
    if (response->pollSeconds)
        m_pollSeconds = std::clamp<qint64>(*response->pollSeconds, 60, 900);
    m_offered.reset();
    if (response->ad) {
        const auto rest = m_resting.find(response->ad->creativeId);
        if (rest == m_resting.end() || m_world.clock.now() - rest->second >= kRest)
            m_offered = response->ad->creativeId;
    }
    m_title = m_offered ? Title::ad : Title::balance;
}

/// What the service has credited is not shown, and nothing is under way that would tell.
bool Rules::isMoneyMissing() const
{
    const bool isVerdictAwaited =
        m_viewing && m_viewing->isCompletionSent && !m_viewing->isOver && !m_viewing->isDismissed;
    return m_walletsOwed == 0 && m_walletsInFlight == 0 && !isVerdictAwaited
        && m_world.service.wallet().wallet.lifetimeCents != m_wallet.wallet.lifetimeCents;
}

void Rules::walletArrives(const SimulatedNetwork::Call& call)
{
    const auto wallet = record<WalletResponse>(call);
    --m_walletsInFlight;
    m_expectsError = !wallet;
    // It may be the loop that waits for it.
    loopGivesSign();
    if (!wallet)
        m_failedWalletNumber = std::max(m_failedWalletNumber, call.number);
    // An answer that was overtaken by a newer one is old news.
    if (call.number < m_walletNumber) {
        m_world.journal.note(u"wallet: overtaken"_s);
        return;
    }
    if (!wallet)
        return;
    m_walletNumber = call.number;
    m_wallet = *wallet;
    m_title = m_offered ? Title::ad : Title::balance;
}

void Rules::viewBegins(QWindow* panel, const QString& creativeId)
{
    expect(m_offered == creativeId, u"An ad is shown that is not on offer."_s);
    expect(!m_viewing || m_viewing->isOver || m_viewing->isDismissed, u"A view is replaced by another one."_s);
    m_viewing.emplace();
    m_viewing->panel = panel;
    m_viewing->creativeId = creativeId;
    m_viewing->anonymousMode = m_settings.anonymousMode;
}

void Rules::viewEnds(std::optional<double> earnedCents)
{
    if (!m_viewing)
        return;
    expect(!m_viewing->isOver, u"A view ends twice."_s);
    expect(!m_viewing->isDismissed, u"A view ends after its dismissal."_s);
    m_viewing->isOver = true;
    ++m_walletsOwed;
    m_viewing->ended = m_world.clock.now();
    m_viewing->lostBeforeEnd = m_lostTime;
    if (earnedCents)
        m_lastEarnedCents = earnedCents;
    creativeRests(m_viewing->creativeId);
}

void Rules::creativeRests(const QString& creativeId)
{
    m_resting.insert_or_assign(creativeId, m_world.clock.now());
    if (m_offered == creativeId)
        m_offered.reset();
    m_title = Title::balance;
}

void Rules::checkSettings()
{
    if (const auto difference = m_settings.differenceTo(m_state))
        m_world.journal.broken(u"A setting is not what it has to be: "_s + *difference);
    expect(!m_state.appSignalConsent() || m_state.ageConfirmed() || m_settings.isFoundConsentAllowed,
        u"There is consent without a confirmed age."_s);
    if (!std::exchange(m_areSettingsTouched, false))
        return;
    if (const auto difference = m_settings.differenceTo(m_readFile()))
        m_world.journal.broken(u"A setting is not stored as it is: "_s + *difference);
}

void Rules::checkTitle()
{
    const auto balance = m_world.desktop.locale.usDollars(m_wallet.wallet.availableCents);
    const auto title = m_title == Title::initial ? u"$0.00"_s
        : m_title == Title::ad                   ? u"AD"_s
        : m_title == Title::off                  ? u"OFF"_s
                                                 : balance;
    expect(m_state.statusTitle() == title, u"The title is %1 and not %2."_s.arg(m_state.statusTitle(), title));
    const auto& offered = m_state.availableAd();
    expect((offered ? std::optional(offered->creativeId) : std::nullopt) == m_offered,
        u"The offer is not what the service offers."_s);
    const auto& shown = m_world.desktop.statusItem.appearances.back();
    const bool isGreen = title == u"AD";
    expect(shown.text == (isGreen ? u"$ AD"_s : u"$"_s)
            && shown.description == (isGreen ? u"Orvella · ad ready"_s : u"Orvella · %1 available"_s.arg(title)),
        u"The item does not show the title."_s);
}

void Rules::checkMoney()
{
    const auto& wallet = m_wallet.wallet;
    expect(m_state.linked() == m_wallet.linked && m_state.pendingCents() == wallet.pendingCents
            && m_state.availableCents() == wallet.availableCents && m_state.paidCents() == wallet.paidCents
            && m_state.lifetimeCents() == wallet.lifetimeCents,
        u"The money shown is not what the wallet held when it was last asked."_s);
    expect(m_state.lastEarnedCents() == m_lastEarnedCents, u"What an ad has earned is not what is shown."_s);
    // What the program waits for may be the token.
    const bool isStarting = !m_hasStarted;
    expect(m_walletsOwed == 0 || isStarting || m_world.keyring.waiting() > 0,
        u"The wallet is not asked for where it has to be."_s);
}

void Rules::checkPanels()
{
    expect(std::ranges::count_if(QGuiApplication::topLevelWindows(), isPanel) <= 1, u"Two panels are shown."_s);
    auto* const shown = panel();
    const bool isNew = shown && shown != m_shownPanel;
    m_shownPanel = shown;
    if (!isNew)
        return;
    if (!m_viewing || m_viewing->panel != shown) {
        expect(m_offered.has_value(), u"A panel is shown without an offer."_s);
        viewBegins(shown, m_offered.value_or(QString()));
    }
    if (m_hasViewerActed)
        return;
    const auto now = m_world.clock.now();
    expect(m_settings.autoOpenAds, u"An ad opens by itself although the viewer does not want that."_s);
    expect(!m_world.desktop.isViewerBusy(), u"An ad opens by itself while it disturbs."_s);
    expect(!m_lastOpenedByItself || now - *m_lastOpenedByItself > kBetweenOpenings,
        u"Ads open by themselves too soon after one another."_s);
    m_lastOpenedByItself = now;
    m_world.journal.note(u"ad: opened by itself"_s);
}

/// The panel goes with the dismissal, and some seconds after any other end.
void Rules::checkView()
{
    if (!m_viewing || !m_viewing->panel || !isPanel(m_viewing->panel))
        return;
    expect(!m_viewing->isDismissed, u"A panel stays after its dismissal."_s);
    if (!m_viewing->isOver)
        return;
    const auto since = m_world.clock.now() - m_viewing->ended - (m_lostTime - m_viewing->lostBeforeEnd);
    expect(since <= kGracePeriod, u"A panel stays after its end."_s);
}

void Rules::checkLoop()
{
    // Before that it may be known and wait for the token to be stored.
    expect(!m_hasStarted || m_state.pollSeconds() == m_pollSeconds,
        u"The pause between two polls is not what the service wants."_s);
    if (!m_hasStarted || !isQuiet())
        return;
    expect(m_isPolling, u"No poll loop runs after the start."_s);
    const auto quiet = m_world.clock.now() - m_lastSign - (m_lostTime - m_lostBeforeSign);
    expect(quiet <= std::chrono::seconds(m_pollSeconds) + kSlack, u"The poll loop has stopped."_s);
}

void Rules::checkError()
{
    expect(m_state.lastError().has_value() == m_expectsError, u"The error shown is not that of the last call."_s);
}

/// Nothing but pages of the web, and where a session is held only what the service has named.
void Rules::checkPages()
{
    for (const auto& page : m_world.desktop.browser.opened) {
        const bool isWeb = (page.scheme() == u"https" || page.scheme() == u"http") && !page.host().isEmpty();
        expect(isWeb, u"Something is opened that is no page of the web."_s);
        const bool isOwn = page.host() == u"service.test";
        const bool isOfAd = m_viewing && (!m_viewing->session || m_clickTargets.contains(page.toString()));
        expect(isOwn || isOfAd, u"A page is opened that nobody has named."_s);
    }
}

void Rules::expect(bool holds, const QString& rule)
{
    if (!holds)
        m_world.journal.broken(rule);
}

/// Nothing is under way for which the loop might wait.
bool Rules::isQuiet() const
{
    return m_world.network.waiting() == 0 && m_world.keyring.waiting() == 0;
}

} // namespace orvella::simulation
