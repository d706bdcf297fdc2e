#pragma once

#include "core/AppState.h"
#include "simulation/LoopRules.h"
#include "simulation/MoneyRules.h"
#include "simulation/RequestRules.h"
#include "simulation/RunTime.h"
#include "simulation/SimulatedNetwork.h"
#include "simulation/ViewRules.h"
#include "simulation/ViewerSettings.h"
#include "simulation/World.h"

namespace orvella::simulation {

/// What must hold after every step of a run, whatever happens.
///
/// It sees the requests and the answers, what the viewer does, and the state and the windows that come of it, and works
/// out by itself what these have to be. Requests, views, money and the loop have rules of their own, which it tells
/// what has happened; settings, title and error are its own.
class Rules final {
public:
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
    void lostTime(Clock::duration time) { m_time.lose(time); }
    void changesLoginItem(bool isRefused) { m_expectsError = isRefused; }

private:
    enum class Title { initial, ad, off, balance };

    void sent(const SimulatedNetwork::Call& call);
    void arrives(const SimulatedNetwork::Call& call);
    void registrationArrives(const SimulatedNetwork::Call& call);
    void offerArrives(const SimulatedNetwork::Call& call);
    void walletArrives(const SimulatedNetwork::Call& call);
    void sessionArrives(const SimulatedNetwork::Call& call);
    void verdictArrives(const SimulatedNetwork::Call& call);
    void viewEnds(std::optional<double> earnedCents);

    void checkSettings();
    void checkTitle();
    void checkError();

    const World m_world;
    const AppState& m_state;
    std::function<QByteArray()> m_readFile;
    RunTime m_time;

    ViewerSettings m_settings;
    bool m_areSettingsTouched = false;
    bool m_hasViewerActed = false;
    Title m_title = Title::initial;
    bool m_expectsError = false;

    RequestRules m_requests;
    ViewRules m_view;
    MoneyRules m_money;
    LoopRules m_loop;
};

} // namespace orvella::simulation
