#include "simulation/Rules.h"

#include "api/Endpoints.h"
#include "simulation/ProgramClock.h"
#include "simulation/SimulatedDesktop.h"
#include "simulation/SimulatedKeyring.h"

#include <QApplication>

namespace orvella::simulation {

using namespace Qt::Literals::StringLiterals;

namespace {

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

} // namespace

Rules::Rules(World world, const AppState& state, const ViewerSettings& settings, std::function<QByteArray()> readFile)
    : m_world(world)
    , m_state(state)
    , m_readFile(std::move(readFile))
    , m_time(world.clock)
    , m_settings(settings)
    , m_requests(m_world, m_settings)
    , m_view(m_world, m_settings, m_time)
    , m_money(m_world, state)
    , m_loop(m_world, state, m_time)
{
    m_world.network.sent = [this](const auto& call) { sent(call); };
    m_world.network.arrives = [this](const auto& call) { arrives(call); };
}

Rules::~Rules()
{
    m_world.expect(m_world.programClock.running() == 0, u"A timer runs on after the end of the program."_s);
    m_world.expect(m_world.network.waiting() == 0, u"A request is waited for after the end of the program."_s);
    m_world.expect(m_world.keyring.reading() == 0, u"The keyring is waited for after the end of the program."_s);
    m_world.expect(QApplication::topLevelWidgets().isEmpty(), u"A window is left after the end of the program."_s);
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
    m_money.check(m_loop.hasStarted());
    m_view.checkPanels(m_hasViewerActed);
    m_view.checkEnd();
    m_loop.check();
    checkError();
    m_view.checkPages();
    m_hasViewerActed = false;
}

void Rules::assigns(ViewerSettings::Name name, bool value)
{
    m_settings.assign(name, value);
    m_areSettingsTouched = true;
}

void Rules::dismisses()
{
    if (!m_view.isOpen())
        return;
    if (m_view.mayBePaid())
        m_money.viewMayHaveBeenPaid();
    m_view.isDismissed();
    m_title = Title::balance;
}

void Rules::sent(const SimulatedNetwork::Call& call)
{
    m_requests.sent(call);
    if (call.path == endpoints::kHeartbeat)
        m_loop.heartbeatSent();
    else if (call.path == endpoints::kAdsAvailable)
        m_loop.pollSent();
    else if (call.path == endpoints::kWallet)
        m_money.walletSent();
    else if (call.path == endpoints::kSessionStart)
        m_view.sessionSent(call);
    else if (call.path == endpoints::kSessionComplete)
        m_view.completionSent(call);
}

void Rules::arrives(const SimulatedNetwork::Call& call)
{
    const auto& path = call.path;
    if (path == endpoints::kRegister) {
        registrationArrives(call);
    } else if (path == endpoints::kHeartbeat) {
        // The end of the start clears what its calls have left.
        m_expectsError = m_loop.hasStarted() && !isSuccess(call);
        m_loop.heartbeatAnswered();
    } else if (path == endpoints::kPreferences) {
        m_expectsError = !isSuccess(call);
    } else if (path == endpoints::kAdsAvailable) {
        offerArrives(call);
    } else if (path == endpoints::kWallet) {
        walletArrives(call);
    } else if (path == endpoints::kSessionStart) {
        sessionArrives(call);
    } else if (path == endpoints::kClick) {
        if (const auto click = record<ClickResponse>(call))
            m_view.clickAnswered(click->targetUrl);
    } else if (path == endpoints::kSessionComplete) {
        verdictArrives(call);
    }
}

void Rules::registrationArrives(const SimulatedNetwork::Call& call)
{
    if (const auto registration = record<DeviceRegistration>(call)) {
        m_loop.wantsPause(registration->pollSeconds);
    } else {
        m_title = Title::off;
        m_expectsError = true;
    }
}

void Rules::offerArrives(const SimulatedNetwork::Call& call)
{
    m_loop.pollAnswered();
    const auto response = record<AvailabilityResponse>(call);
    m_expectsError = !response;
    if (!response)
        return;
    m_money.pollAnswered(m_view.isVerdictAwaited());
    if (response->pollSeconds)
        m_loop.wantsPause(*response->pollSeconds);
    m_view.offered(response->ad ? std::optional(response->ad->creativeId) : std::nullopt);
    m_title = m_view.offer() ? Title::ad : Title::balance;
}

void Rules::walletArrives(const SimulatedNetwork::Call& call)
{
    const auto wallet = record<WalletResponse>(call);
    m_expectsError = !wallet;
    // It may be the loop that waits for it.
    m_loop.givesSign();
    if (m_money.walletAnswered(call.number, wallet))
        m_title = m_view.offer() ? Title::ad : Title::balance;
}

void Rules::sessionArrives(const SimulatedNetwork::Call& call)
{
    const auto session = record<AdSession>(call);
    m_view.sessionAnswered(session);
    if (!session)
        viewEnds(std::nullopt);
}

void Rules::verdictArrives(const SimulatedNetwork::Call& call)
{
    const auto verdict = record<CompletionResponse>(call);
    std::optional<double> earnedCents;
    if (verdict && verdict->completed)
        earnedCents = verdict->viewerEarnCentsExact.value_or(static_cast<double>(verdict->viewerEarnCents));
    if (!verdict) {
        m_view.verdictIsLost();
        m_money.viewMayHaveBeenPaid();
    }
    viewEnds(earnedCents);
}

void Rules::viewEnds(std::optional<double> earnedCents)
{
    if (!m_view.isThereOne())
        return;
    m_view.ends();
    m_money.viewEnded(earnedCents);
    m_title = Title::balance;
}

void Rules::checkSettings()
{
    if (const auto difference = m_settings.differenceTo(m_state))
        m_world.journal.broken(u"A setting is not what it has to be: "_s + *difference);
    m_world.expect(!m_state.appSignalConsent() || m_state.ageConfirmed() || m_settings.isFoundConsentAllowed,
        u"There is consent without a confirmed age."_s);
    if (!std::exchange(m_areSettingsTouched, false))
        return;
    if (const auto difference = m_settings.differenceTo(m_readFile()))
        m_world.journal.broken(u"A setting is not stored as it is: "_s + *difference);
}

void Rules::checkTitle()
{
    const auto balance = m_world.desktop.locale.usDollars(m_money.availableCents());
    const auto title = m_title == Title::initial ? u"$0.00"_s
        : m_title == Title::ad                   ? u"AD"_s
        : m_title == Title::off                  ? u"OFF"_s
                                                 : balance;
    m_world.expect(m_state.statusTitle() == title, u"The title is %1 and not %2."_s.arg(m_state.statusTitle(), title));
    const auto& offered = m_state.availableAd();
    m_world.expect((offered ? std::optional(offered->creativeId) : std::nullopt) == m_view.offer(),
        u"The offer is not what the service offers."_s);
    const auto& shown = m_world.desktop.statusItem.appearances.back();
    const bool isGreen = title == u"AD";
    m_world.expect(shown.text == (isGreen ? u"$ AD"_s : u"$"_s)
            && shown.description == (isGreen ? u"Orvella · ad ready"_s : u"Orvella · %1 available"_s.arg(title)),
        u"The item does not show the title."_s);
}

void Rules::checkError()
{
    m_world.expect(
        m_state.lastError().has_value() == m_expectsError, u"The error shown is not that of the last call."_s);
}

} // namespace orvella::simulation
