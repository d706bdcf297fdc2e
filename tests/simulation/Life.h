#pragma once

#include "platform/linux/settings/FileSettingsStore.h"
#include "simulation/ProgramClock.h"
#include "simulation/SimulatedDesktop.h"
#include "simulation/SimulatedKeyring.h"
#include "simulation/SimulatedNetwork.h"
#include "simulation/SimulatedService.h"
#include "simulation/SimulatedViewer.h"

#include <QTemporaryDir>

namespace orvella::simulation {

/// Some days of one viewer with the program: everything that happens follows from the seed.
class Life final {
public:
    /// Whether the program is started again now and then.
    enum class Restarts { happen, never };

    Life(quint64 seed, Journal::Telling telling, Restarts restarts = Restarts::happen);
    ~Life();

    /// Lets the days pass, or as many of them as there are until a rule is broken.
    void live(std::chrono::days days);
    /// Ends the program, which has its own rules.
    void end() { stop(); }

    [[nodiscard]] const Journal& journal() const { return m_journal; }
    [[nodiscard]] Journal& journal() { return m_journal; }
    [[nodiscard]] SimulatedNetwork& network() { return m_network; }
    [[nodiscard]] SimulatedDesktop& desktop() { return m_desktop; }
    [[nodiscard]] SimulatedViewer& viewer() { return m_viewer; }
    /// Where the program has its files.
    [[nodiscard]] QString folder() const { return m_folder.path(); }
    [[nodiscard]] const ProgramClock& programClock() const { return m_programClock; }
    [[nodiscard]] qint64 creditedViews() const { return m_service.creditedViews(); }
    [[nodiscard]] qint64 steps() const { return m_steps; }

private:
    /// The program from one start to its end.
    struct Run;

    void start();
    void stop();
    void step();
    void recur(std::chrono::milliseconds shortest, std::chrono::milliseconds longest, void (Life::*happens)());
    void awaitViewer();
    void viewerActs();
    void networkChanges();
    void keyringChanges();
    void desktopChanges();
    void serviceActs();
    void machineSleeps();
    void machineHangs();
    void programRestarts();
    void meddleWithSettings();

    QTemporaryDir m_folder;
    QString m_settingsPath;
    FakeClock m_clock;
    Journal m_journal;
    Chance m_chance;
    SimulatedService m_service;
    SimulatedNetwork m_network;
    SimulatedKeyring m_keyring;
    SimulatedDesktop m_desktop;
    SimulatedViewer m_viewer;
    ProgramClock m_programClock;
    std::unique_ptr<Run> m_run;
    qint64 m_steps = 0;
};

} // namespace orvella::simulation
