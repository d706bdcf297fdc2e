#include "simulation/ViewRules.h"

#include "simulation/RequestBody.h"
#include "simulation/SimulatedDesktop.h"

#include <QGuiApplication>

#include <algorithm>

namespace orvella::simulation {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kRest = 300s;
constexpr auto kGracePeriod = 3s;
constexpr auto kBetweenOpenings = 120s;

bool isPanel(const QWindow* window)
{
    return window->isVisible() && window->objectName() == u"adPanelWindow";
}

} // namespace

ViewRules::ViewRules(const World& world, const ViewerSettings& settings, const RunTime& time)
    : m_world(world)
    , m_settings(settings)
    , m_time(time)
{
}

QWindow* ViewRules::panel()
{
    for (auto* const window : QGuiApplication::topLevelWindows()) {
        if (isPanel(window))
            return window;
    }
    return nullptr;
}

void ViewRules::offered(const std::optional<QString>& creativeId)
{
    m_offer.reset();
    if (!creativeId)
        return;
    const auto rest = m_resting.find(*creativeId);
    if (rest == m_resting.end() || m_world.clock.now() - rest->second >= kRest)
        m_offer = creativeId;
}

void ViewRules::sessionSent(const SimulatedNetwork::Call& call)
{
    const RequestBody body(call.body);
    auto* const shown = panel();
    m_world.expect(shown != nullptr, u"A session is asked for without a panel."_s);
    if (!m_view || m_view->panel != shown)
        begins(shown, body.text(u"creativeId"_s));
    m_world.expect(!std::exchange(m_view->isSessionRequested, true), u"A view asks for a second session."_s);
    m_world.expect(m_view->creativeId == body.text(u"creativeId"_s), u"The session is not that of the ad shown."_s);
    m_world.expect(body.flag(u"anonymousMode"_s) == m_view->anonymousMode,
        u"The session has not the anonymous mode of its beginning."_s);
}

void ViewRules::sessionAnswered(const std::optional<AdSession>& session)
{
    if (m_view)
        m_view->session = session;
}

void ViewRules::completionSent(const SimulatedNetwork::Call& call)
{
    m_world.expect(m_view && m_view->session, u"A completion is sent without a session."_s);
    if (!m_view || !m_view->session)
        return;
    m_world.expect(
        m_view->session->sessionId == RequestBody(call.body).text(u"sessionId"_s), u"Another session is completed."_s);
    m_world.expect(!m_view->isDismissed, u"A view is completed after its dismissal."_s);
    m_world.expect(!m_view->isCompletionSent, u"A view is completed twice."_s);
    m_view->isCompletionSent = true;
}

void ViewRules::verdictIsLost()
{
    if (m_view)
        m_view->isVerdictLost = true;
}

void ViewRules::ends()
{
    m_world.expect(!m_view->isOver, u"A view ends twice."_s);
    m_world.expect(!m_view->isDismissed, u"A view ends after its dismissal."_s);
    m_view->isOver = true;
    m_view->ended = m_time.now();
    rests(m_view->creativeId);
}

void ViewRules::isDismissed()
{
    m_view->isDismissed = true;
    rests(m_view->creativeId);
}

bool ViewRules::isVerdictAwaited() const
{
    return m_view && m_view->isCompletionSent && !m_view->isOver && !m_view->isDismissed;
}

void ViewRules::checkPanels(bool hasViewerActed)
{
    m_world.expect(std::ranges::count_if(QGuiApplication::topLevelWindows(), isPanel) <= 1, u"Two panels are shown."_s);
    auto* const shown = panel();
    const bool isNew = shown && shown != m_shownPanel;
    m_shownPanel = shown;
    if (!isNew)
        return;
    if (!m_view || m_view->panel != shown) {
        m_world.expect(m_offer.has_value(), u"A panel is shown without an offer."_s);
        begins(shown, m_offer.value_or(QString()));
    }
    if (!hasViewerActed)
        checkOpenedByItself();
}

/// The panel goes with the dismissal, and some seconds after any other end.
void ViewRules::checkEnd() const
{
    if (!m_view || !m_view->panel || !isPanel(m_view->panel))
        return;
    m_world.expect(!m_view->isDismissed, u"A panel stays after its dismissal."_s);
    m_world.expect(!m_view->isOver || m_time.now() - m_view->ended <= kGracePeriod, u"A panel stays after its end."_s);
}

/// Nothing but pages of the web, and where a session is held only what the service has named.
void ViewRules::checkPages() const
{
    for (const auto& page : m_world.desktop.browser.opened) {
        const bool isWeb = (page.scheme() == u"https" || page.scheme() == u"http") && !page.host().isEmpty();
        m_world.expect(isWeb, u"Something is opened that is no page of the web."_s);
        const bool isOwn = page.host() == u"service.test";
        const bool isOfAd = m_view && (!m_view->session || m_clickTargets.contains(page.toString()));
        m_world.expect(isOwn || isOfAd, u"A page is opened that nobody has named."_s);
    }
}

void ViewRules::begins(QWindow* panel, const QString& creativeId)
{
    m_world.expect(m_offer == creativeId, u"An ad is shown that is not on offer."_s);
    m_world.expect(!m_view || m_view->isOver || m_view->isDismissed, u"A view is replaced by another one."_s);
    m_view.emplace();
    m_view->panel = panel;
    m_view->creativeId = creativeId;
    m_view->anonymousMode = m_settings.anonymousMode;
}

void ViewRules::rests(const QString& creativeId)
{
    m_resting.insert_or_assign(creativeId, m_world.clock.now());
    if (m_offer == creativeId)
        m_offer.reset();
}

void ViewRules::checkOpenedByItself()
{
    const auto now = m_world.clock.now();
    m_world.expect(m_settings.autoOpenAds, u"An ad opens by itself although the viewer does not want that."_s);
    m_world.expect(!m_world.desktop.isViewerBusy(), u"An ad opens by itself while it disturbs."_s);
    m_world.expect(!m_lastOpenedByItself || now - *m_lastOpenedByItself > kBetweenOpenings,
        u"Ads open by themselves too soon after one another."_s);
    m_lastOpenedByItself = now;
    m_world.journal.note(u"ad: opened by itself"_s);
}

} // namespace orvella::simulation
