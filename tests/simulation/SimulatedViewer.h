#pragma once

#include "app/AppDelegate.h"
#include "simulation/Rules.h"

class QAbstractButton;

namespace orvella::simulation {

/// The person in front of the screen: clicks what there is to be clicked, and changes their mind.
class SimulatedViewer final {
public:
    SimulatedViewer(Chance& chance, Journal& journal, SimulatedDesktop& desktop);

    /// Does one thing to the running program.
    void act(AppDelegate& program, Rules& rules);
    /// Called with every report that the viewer has asked for.
    std::function<void(const QString&)> reported = [](const QString& /*report*/) {};

    /// How long until the next one: soon while there is something to see.
    [[nodiscard]] std::chrono::milliseconds nextPause();

private:
    void turnAway();
    QCoro::Task<> askForReport(AppDelegate& program);
    void actOnPanel(Rules& rules);
    void actOnItem(AppDelegate& program, Rules& rules);
    void assign(AppDelegate& program, Rules& rules);
    void toggle(AppDelegate& program, Rules& rules);
    void changeLoginItem(AppDelegate& program, Rules& rules);

    Chance& m_chance;
    Journal& m_journal;
    SimulatedDesktop& m_desktop;
    /// Whether this viewer mostly sees ads through.
    bool m_isPatient;
};

} // namespace orvella::simulation
