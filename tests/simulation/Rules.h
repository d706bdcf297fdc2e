#pragma once

#include "core/AppState.h"
#include "simulation/SimulatedNetwork.h"
#include "simulation/ViewerSettings.h"

#include <QPointer>
#include <QWindow>

namespace orvella::simulation {

class ProgramClock;
class SimulatedDesktop;
class SimulatedKeyring;
class SimulatedService;

/// One view of one ad.
struct Viewing {
    QPointer<QWindow> panel;
    QString creativeId;
    bool isSessionRequested = false;
    std::optional<AdSession> session;
    bool isDismissed = false;
    bool isCompletionSent = false;
    bool isOver = false;
    /// What the viewer wanted when it began.
    bool anonymousMode = true;
    /// The time since the end in which the panel had to go, and what had been lost by then.
    Instant ended;
    Clock::duration lostBeforeEnd {};
};

/// What must hold after every step of a run, whatever happens.
///
/// It sees the requests and the answers, what the viewer does, and the state and the windows that come of it, and works
/// out by itself what these have to be.
class Rules final {
public:
    struct World {
        const Clock& clock;
        Journal& journal;
        SimulatedNetwork& network;
        const SimulatedService& service;
        const SimulatedKeyring& keyring;
        const SimulatedDesktop& desktop;
        const ProgramClock& programClock;
    };

    /// A run begins with these settings; `readFile` reads them from the disk as they are then.
    Rules(World world, const AppState& state, const ViewerSettings& settings, std::function<QByteArray()> readFile);
    Rules(const Rules&) = delete;
    Rules& operator=(const Rules&) = delete;
    /// The run is over, and everything that belonged to it has gone.
    ~Rules();

    void afterStep();

    /// What the settings have to be now.
    [[nodiscard]] const ViewerSettings& settings() const { return m_settings; }

    // What the viewer does, told before it is done.
    void assigns(ViewerSettings::Name name, bool value);
    void dismisses();
    /// Something the viewer does may open an ad in this step.
    void mayOpenAd() { m_hasViewerActed = true; }
    /// The machine was suspended, or the program did not run.
    void lostTime(Clock::duration time) { m_lostTime += time; }
    void changesLoginItem(bool isRefused) { m_expectsError = isRefused; }

    /// The panel on the screen.
    [[nodiscard]] static QWindow* panel();

private:
    enum class Title { initial, ad, off, balance };

    void sent(const SimulatedNetwork::Call& call);
    void arrives(const SimulatedNetwork::Call& call);
    void checkPrivacy(const SimulatedNetwork::Call& call);
    void checkToken(const SimulatedNetwork::Call& call);
    void walletRequested();
    void sessionRequested(const SimulatedNetwork::Call& call);
    void completionRequested(const SimulatedNetwork::Call& call);
    void cycleBegins();
    void loopGivesSign();
    void offerArrives(const SimulatedNetwork::Call& call);
    [[nodiscard]] bool isMoneyMissing() const;
    void walletArrives(const SimulatedNetwork::Call& call);
    void viewBegins(QWindow* panel, const QString& creativeId);
    void viewEnds(std::optional<double> earnedCents);
    void creativeRests(const QString& creativeId);

    void checkSettings();
    void checkTitle();
    void checkMoney();
    void checkPanels();
    void checkView();
    void checkLoop();
    void checkError();
    void checkPages();
    void expect(bool holds, const QString& rule);
    [[nodiscard]] bool isQuiet() const;

    World m_world;
    const AppState& m_state;
    std::function<QByteArray()> m_readFile;

    ViewerSettings m_settings;
    bool m_areSettingsTouched = false;
    bool m_hasViewerActed = false;

    std::optional<Viewing> m_viewing;
    QPointer<QWindow> m_shownPanel;
    std::optional<Instant> m_lastOpenedByItself;
    std::map<QString, Instant> m_resting;
    std::optional<QString> m_offered;
    Title m_title = Title::initial;
    std::optional<double> m_lastEarnedCents;
    /// How many requests for the wallet there is a reason for: the start, the end of a view, a wallet to make up for.
    int m_walletsOwed = 1;
    /// Whether one more is allowed: a view was closed that may have been complete.
    bool m_isWalletAllowed = false;
    /// The latest question for the wallet that has had no answer.
    int m_failedWalletNumber = 0;
    int m_walletsInFlight = 0;
    /// Where the clicks that the service has answered lead to.
    QStringList m_clickTargets;

    WalletResponse m_wallet;
    int m_walletNumber = 0;
    qint64 m_pollSeconds = 300;
    int m_heartbeats = 0;
    int m_cyclesInFlight = 0;
    bool m_hasStarted = false;
    bool m_isPolling = false;
    Instant m_lastCycle;
    /// When the loop last had something to do, and how much time had been lost by then.
    Instant m_lastSign;
    Clock::duration m_lostTime {};
    Clock::duration m_lostBeforeSign {};
    bool m_expectsError = false;
};

} // namespace orvella::simulation
