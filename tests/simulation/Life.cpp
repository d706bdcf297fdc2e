#include "simulation/Life.h"

#include "simulation/PostedWork.h"

#include <QDir>
#include <QFile>

#include <array>

namespace orvella::simulation {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

/// In memory where the system has such a folder: what is synced to it costs nothing.
QString scratchFolder()
{
    const auto memory = u"/dev/shm"_s;
    return (QFileInfo(memory).isWritable() ? memory : QDir::tempPath()) + u"/orvella-life-XXXXXX"_s;
}

QByteArray contents(const QString& path)
{
    QFile file(path);
    return file.open(QFile::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

struct Life::Run {
    Run(Life& life, const QString& settingsPath)
        : found(ViewerSettings::read(contents(settingsPath)))
        , settings(settingsPath)
        , delegate(life.m_desktop.lend(life.m_programClock, settings, life.m_keyring), life.m_network)
    {
        delegate.applicationDidFinishLaunching();
        rules = std::make_unique<Rules>(World {life.m_clock, life.m_journal, life.m_network, life.m_service,
                                            life.m_keyring, life.m_desktop, life.m_programClock},
            delegate.controller()->state(), found, [settingsPath] { return contents(settingsPath); });
    }

    ViewerSettings found;
    FileSettingsStore settings;
    /// Outlives the program, so that it sees what is left of it.
    std::unique_ptr<Rules> rules;
    AppDelegate delegate;
};

Life::Life(quint64 seed, Journal::Telling telling, Restarts restarts)
    : m_folder(scratchFolder())
    , m_settingsPath(m_folder.filePath(u"settings.json"_s))
    , m_journal(m_clock, telling)
    , m_chance(seed)
    , m_service(m_clock, m_chance, m_journal)
    , m_network(m_clock, m_chance, m_journal, m_service)
    , m_keyring(m_clock, m_chance, m_journal)
    , m_desktop(m_chance, m_journal)
    , m_viewer(m_chance, m_journal, m_desktop)
    , m_programClock(m_clock)
{
    if (!m_folder.isValid())
        qFatal("There is no folder for the settings.");
    // Earlier versions kept the token under another name.
    if (m_chance.oneIn(5))
        m_keyring.put(Keychain::kLegacyService, m_service.issueToken());
    if (m_chance.oneIn(3))
        m_network.change();
    if (m_chance.oneIn(3))
        m_keyring.changeMood();
    awaitViewer();
    recur(1min, 8h, &Life::networkChanges);
    recur(1min, 12h, &Life::keyringChanges);
    recur(1min, 2h, &Life::desktopChanges);
    recur(1h, 12h, &Life::serviceActs);
    recur(10min, 16h, &Life::machineSleeps);
    recur(1h, 48h, &Life::machineHangs);
    if (restarts == Restarts::happen)
        recur(1min, 72h, &Life::programRestarts);
    start();
}

Life::~Life()
{
    stop();
}

void Life::live(std::chrono::days days)
{
    const auto end = m_clock.now() + days;
    while (m_clock.now() < end && !m_journal.isBroken() && m_clock.elapseNext())
        step();
}

void Life::start()
{
    m_journal.note(u"program: starts"_s);
    m_service.beginRun();
    m_run = std::make_unique<Run>(*this, m_settingsPath);
    step();
}

/// As a program that is told to end: everything that belongs to it is taken down in order, at a moment that nothing
/// has chosen. A process that is killed is another test's matter.
void Life::stop()
{
    if (!m_run)
        return;
    m_journal.note(u"program: ends"_s);
    auto rules = std::move(m_run->rules);
    const auto kept = rules->settings();
    m_run.reset();
    doPostedWork();
    rules.reset();
    m_keyring.endRun();
    doPostedWork();
    if (const auto difference = kept.differenceTo(contents(m_settingsPath)))
        m_journal.broken(u"A setting has changed with the end of the program: "_s + *difference);
}

void Life::step()
{
    ++m_steps;
    doPostedWork();
    if (m_run)
        m_run->rules->afterStep();
    m_desktop.tidy();
}

void Life::recur(std::chrono::milliseconds shortest, std::chrono::milliseconds longest, void (Life::*happens)())
{
    m_clock.startAlarm(m_chance.between(shortest, longest), [this, shortest, longest, happens] {
        recur(shortest, longest, happens);
        (this->*happens)();
    });
}

void Life::awaitViewer()
{
    m_clock.startAlarm(m_viewer.nextPause(), [this] {
        viewerActs();
        awaitViewer();
    });
}

void Life::viewerActs()
{
    if (m_run)
        m_viewer.act(m_run->delegate, *m_run->rules);
}

void Life::networkChanges()
{
    m_network.change();
}

void Life::keyringChanges()
{
    m_keyring.changeMood();
}

void Life::desktopChanges()
{
    m_desktop.change();
}

void Life::serviceActs()
{
    if (m_chance.oneIn(3))
        m_service.changeLink();
    else
        m_service.settleMoney();
}

void Life::machineSleeps()
{
    const auto pause = m_chance.oneIn(2) ? m_chance.between(1ms, 5min) : m_chance.between(5min, 10h);
    m_journal.note(u"machine: sleeps for %1 ms"_s.arg(pause.count()));
    m_clock.standStill(pause);
    if (m_run)
        m_run->rules->lostTime(pause);
}

/// The program gets no time, or the clock is moved on under it, as a virtual machine's is.
void Life::machineHangs()
{
    const auto pause = m_chance.between(1s, 20min);
    m_journal.note(u"machine: hangs for %1 ms"_s.arg(pause.count()));
    m_clock.skip(pause);
    if (m_run)
        m_run->rules->lostTime(pause);
}

void Life::programRestarts()
{
    stop();
    if (m_chance.oneIn(4))
        meddleWithSettings();
    start();
}

/// The file is edited, lost or damaged while the program does not run.
void Life::meddleWithSettings()
{
    const auto before = contents(m_settingsPath);
    const std::array<QByteArray, 6> choices {R"({"appSignalConsent":true,"anonymousMode":false})",
        R"({"appSignalConsent":true,"ageConfirmed":"yes","anonymousMode":0})", before.first(before.size() / 2), "[]",
        "\xff", R"({"autoOpenAds":true,"apiBaseURL":5,"showLaunchWindowAtStartup":false})"};
    m_journal.note(u"settings: meddled with"_s);
    QFile file(m_settingsPath);
    if (m_chance.oneIn(6))
        file.remove();
    else if (file.open(QFile::WriteOnly))
        file.write(m_chance.pick(choices));
}

} // namespace orvella::simulation
