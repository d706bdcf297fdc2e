#pragma once

#include "api/Records.h"
#include "simulation/RunTime.h"
#include "simulation/SimulatedNetwork.h"
#include "simulation/ViewerSettings.h"
#include "simulation/World.h"

#include <QPointer>
#include <QStringList>
#include <QWindow>

namespace orvella::simulation {

/// One view of one ad.
struct Viewing {
    QPointer<QWindow> panel;
    QString creativeId;
    bool isSessionRequested = false;
    std::optional<AdSession> session;
    bool isDismissed = false;
    bool isCompletionSent = false;
    bool isVerdictLost = false;
    bool isOver = false;
    /// What the viewer wanted when it began.
    bool anonymousMode = true;
    /// From then on the panel has to go.
    Instant ended;
};

/// One panel with the ad on offer, one session for it, and only the pages that belong to it.
class ViewRules final {
public:
    ViewRules(const World& world, const ViewerSettings& settings, const RunTime& time);

    /// The panel on the screen.
    [[nodiscard]] static QWindow* panel();

    // What has happened.
    /// The service offers this creative, or none.
    void offered(const std::optional<QString>& creativeId);
    void sessionSent(const SimulatedNetwork::Call& call);
    void sessionAnswered(const std::optional<AdSession>& session);
    void completionSent(const SimulatedNetwork::Call& call);
    void verdictIsLost();
    void clickAnswered(const QString& targetUrl) { m_clickTargets = {targetUrl}; }
    void ends();
    void isDismissed();

    /// Whether there is or was a view.
    [[nodiscard]] bool isThereOne() const { return m_view.has_value(); }
    /// Whether there is one to dismiss.
    [[nodiscard]] bool isOpen() const { return m_view && m_view->panel; }
    /// Whether the service may credit it yet, or may have done so.
    [[nodiscard]] bool mayBePaid() const
    {
        return m_view && m_view->session && (!m_view->isOver || m_view->isVerdictLost);
    }
    [[nodiscard]] bool isVerdictAwaited() const;
    /// The creative that has to be on offer.
    [[nodiscard]] const std::optional<QString>& offer() const { return m_offer; }

    void checkPanels(bool hasViewerActed);
    void checkEnd() const;
    void checkPages() const;

private:
    void begins(QWindow* panel, const QString& creativeId);
    void rests(const QString& creativeId);
    void checkOpenedByItself();

    const World& m_world;
    const ViewerSettings& m_settings;
    const RunTime& m_time;
    std::optional<Viewing> m_view;
    QPointer<QWindow> m_shownPanel;
    std::optional<Instant> m_lastOpenedByItself;
    std::map<QString, Instant> m_resting;
    std::optional<QString> m_offer;
    /// Where the clicks that the service has answered lead to.
    QStringList m_clickTargets;
};

} // namespace orvella::simulation
