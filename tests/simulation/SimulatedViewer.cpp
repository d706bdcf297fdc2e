#include "simulation/SimulatedViewer.h"

#include "simulation/SimulatedDesktop.h"
#include "support/ShownWindow.h"

#include <QAbstractButton>

#include <array>

namespace orvella::simulation {

using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using Name = ViewerSettings::Name;

constexpr std::array kNames {Name::anonymousMode, Name::appSignalConsent, Name::ageConfirmed, Name::autoOpenAds,
    Name::showLaunchWindowAtStartup};

/// What the switches of both windows are called, in the order of the names.
const std::array kSwitches {
    u"anonymousMode"_s, u"appSignalConsent"_s, u"ageConfirmed"_s, u"autoOpenAds"_s, u"showLaunchWindow"_s};

Setting& setting(AppState& state, Name name)
{
    switch (name) {
    case Name::anonymousMode:
        return state.anonymousMode;
    case Name::appSignalConsent:
        return state.appSignalConsent;
    case Name::ageConfirmed:
        return state.ageConfirmed;
    case Name::autoOpenAds:
        return state.autoOpenAds;
    case Name::showLaunchWindowAtStartup:
        break;
    }
    return state.showLaunchWindowAtStartup;
}

QAbstractButton* button(const QWidget* window, const QString& name)
{
    return window ? window->findChild<QAbstractButton*>(name) : nullptr;
}

} // namespace

SimulatedViewer::SimulatedViewer(Chance& chance, Journal& journal, SimulatedDesktop& desktop)
    : m_chance(chance)
    , m_journal(journal)
    , m_desktop(desktop)
    , m_isPatient(!chance.oneIn(3))
{
}

std::chrono::milliseconds SimulatedViewer::nextPause()
{
    if (ViewRules::panel())
        return m_isPatient ? m_chance.between(1s, 90s) : m_chance.between(10ms, 20s);
    if (shownWindow(u"menuPanel"_s) || shownWindow(u"launchWindow"_s))
        return m_chance.between(100ms, 2min);
    return m_chance.oneIn(4) ? m_chance.between(1ms, 5s) : m_chance.between(10s, 2h);
}

void SimulatedViewer::act(AppDelegate& program, Rules& rules)
{
    if (ViewRules::panel() && !m_chance.oneIn(3)) {
        actOnPanel(rules);
        return;
    }
    if (auto* const open = button(shownWindow(u"menuPanel"_s), u"openAd"_s); open && m_chance.oneIn(3)) {
        m_journal.note(u"viewer: opens the ad from the menu"_s);
        rules.mayOpenAd();
        open->click();
        return;
    }
    if ((shownWindow(u"menuPanel"_s) || shownWindow(u"launchWindow"_s)) && m_chance.oneIn(2)) {
        turnAway();
        return;
    }
    switch (m_chance.below(10)) {
    case 0:
    case 1:
    case 2:
        actOnItem(program, rules);
        break;
    case 3:
        assign(program, rules);
        break;
    case 4:
    case 5:
        toggle(program, rules);
        break;
    case 6:
        changeLoginItem(program, rules);
        break;
    case 7:
        m_journal.note(u"viewer: asks for a report"_s);
        askForReport(program);
        break;
    default:
        turnAway();
        break;
    }
}

QCoro::Task<> SimulatedViewer::askForReport(AppDelegate& program)
{
    const auto report = co_await program.diagnosis();
    reported(report);
}

/// Closes what is open.
void SimulatedViewer::turnAway()
{
    m_journal.note(u"viewer: turns away"_s);
    m_desktop.windows.press({5, 5});
    if (auto* const gotIt = button(shownWindow(u"launchWindow"_s), u"gotIt"_s))
        gotIt->click();
}

void SimulatedViewer::actOnPanel(Rules& rules)
{
    auto* const panel = shownWindow(u"adPanel"_s);
    switch (m_chance.below(m_isPatient ? 12 : 5)) {
    case 0:
        m_journal.note(u"viewer: dismisses"_s);
        rules.dismisses();
        if (auto* const close = button(panel, u"close"_s))
            close->click();
        break;
    case 1:
        m_journal.note(u"viewer: closes the window"_s);
        rules.dismisses();
        panel->close();
        break;
    case 2:
    case 3:
        m_journal.note(u"viewer: goes to the advertiser"_s);
        if (auto* const open = button(panel, u"openAd"_s))
            open->click();
        break;
    case 4:
        m_journal.note(u"viewer: asks why"_s);
        if (auto* const information = button(panel, u"adInformation"_s))
            information->click();
        break;
    default:
        break;
    }
}

void SimulatedViewer::actOnItem(AppDelegate& program, Rules& rules)
{
    rules.mayOpenAd();
    switch (m_chance.below(5)) {
    case 0:
        m_journal.note(u"viewer: starts the program again"_s);
        program.perform(m_chance.oneIn(2) ? Instance::Request::reopen : Instance::Request::showSettings);
        break;
    case 1:
        m_journal.note(u"viewer: asks for the ad"_s);
        program.perform(Instance::Request::openAd);
        break;
    default:
        m_journal.note(u"viewer: clicks the item"_s);
        m_desktop.statusItem.handlers.clicked();
        break;
    }
}

/// As an assistive technology may: whatever the windows allow.
void SimulatedViewer::assign(AppDelegate& program, Rules& rules)
{
    const auto name = m_chance.pick(kNames);
    const bool value = m_chance.oneIn(2);
    m_journal.note(u"viewer: sets %1 to %2"_s.arg(kSwitches.at(static_cast<std::size_t>(name))).arg(value));
    rules.assigns(name, value);
    setting(program.controller()->state(), name) = value;
}

void SimulatedViewer::toggle(AppDelegate& program, Rules& rules)
{
    auto* const window = m_chance.oneIn(2) ? shownWindow(u"menuPanel"_s) : shownWindow(u"launchWindow"_s);
    const auto name = m_chance.pick(kNames);
    const auto& text = kSwitches.at(static_cast<std::size_t>(name));
    auto* const control = button(window, text);
    if (!control || !control->isEnabled())
        return;
    m_journal.note(u"viewer: toggles "_s + text);
    const bool value = !control->isChecked();
    if (value != setting(program.controller()->state(), name)())
        rules.assigns(name, value);
    control->click();
}

void SimulatedViewer::changeLoginItem(AppDelegate& program, Rules& rules)
{
    m_journal.note(u"viewer: sets the login item"_s);
    rules.changesLoginItem(m_desktop.loginItem.failure.has_value());
    program.controller()->state().setLaunchAtLogin(m_chance.oneIn(2));
}

} // namespace orvella::simulation
