#include "simulation/SimulatedDesktop.h"

#include <array>

namespace orvella::simulation {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kFront = 4711;
constexpr QSizeF kScreen {1440, 900};

} // namespace

SimulatedDesktop::SimulatedDesktop(Chance& chance, Journal& journal)
    : m_chance(chance)
    , m_journal(journal)
{
    foreground.front = kFront;
    changeApplications();
    changeBar();
}

void SimulatedDesktop::change()
{
    switch (m_chance.below(6)) {
    case 0:
        changeApplications();
        break;
    case 1:
        changeBar();
        break;
    case 2:
    case 3:
        changeForeground();
        break;
    case 4:
        changeWindows();
        break;
    default:
        loginItem.failure.reset();
        if (m_chance.oneIn(2))
            loginItem.failure = Failure {Failure::Kind::refused, u"The session refuses."_s};
        locale.language = m_chance.oneIn(4) ? std::nullopt : std::optional(u"de"_s);
        browser.succeeds = !m_chance.oneIn(4);
        break;
    }
    m_journal.note(u"desktop: changed"_s);
}

void SimulatedDesktop::tidy()
{
    constexpr std::size_t kEnough = 64;
    if (auto& shown = statusItem.appearances; shown.size() > kEnough)
        shown.erase(shown.begin(), shown.end() - 1);
    browser.opened.clear();
    windows.activated.clear();
}

bool SimulatedDesktop::isViewerBusy() const
{
    if (foreground.locked.value_or(false) || foreground.keptAwake.value_or(false))
        return true;
    return foreground.front && foreground.onScreen && !foreground.onScreen->empty();
}

void SimulatedDesktop::changeApplications()
{
    static constexpr std::array kWords {
        u"code", u"blender", u"figma", u"firefox", u"music", u"terminal", u"mail", u"steam", u"photo", u"nothing"};
    applications.running.clear();
    for (auto count = m_chance.below(12); count > 0; --count) {
        const QString word = QString::fromUtf16(m_chance.pick(kWords));
        applications.running.push_back({!m_chance.oneIn(4), u"org.%1.%2"_s.arg(QString(kApplicationMark), word),
            u"%1 %2"_s.arg(word, QString(kApplicationMark))});
    }
}

/// The bar goes and comes again, elsewhere, or on a screen that is not there any more.
void SimulatedDesktop::changeBar()
{
    static const std::array kPlaces {std::optional<QRect>(), std::optional(QRect(700, 0, 24, 24)),
        std::optional(QRect(0, 776, 1, 1)), std::optional(QRect(-4000, 5000, 24, 24)),
        std::optional(QRect(9, 9, 0, 0))};
    statusItem.placed = m_chance.pick(kPlaces);
}

void SimulatedDesktop::changeForeground()
{
    foreground.locked = m_chance.oneIn(3) ? std::optional(m_chance.oneIn(2)) : std::nullopt;
    foreground.keptAwake = m_chance.oneIn(4) ? std::optional(m_chance.oneIn(2)) : std::nullopt;
    foreground.front = m_chance.oneIn(4) ? std::nullopt : std::optional(kFront);
    foreground.onScreen.reset();
    if (m_chance.oneIn(2))
        foreground.onScreen.emplace();
    if (foreground.onScreen && m_chance.oneIn(2))
        foreground.onScreen->push_back({kFront, 0, kScreen});
    foreground.screenSizes = {kScreen};
    if (m_chance.oneIn(3))
        foreground.screenSizes.push_back({3840, 2160});
}

void SimulatedDesktop::changeWindows()
{
    windows.composites = m_chance.oneIn(40);
    windows.places = !m_chance.oneIn(4);
    look.current = m_chance.oneIn(2) ? DesktopLook::Scheme::dark : DesktopLook::Scheme::light;
    look.scale = m_chance.oneIn(3) ? 1.5 : 1;
    if (look.changed)
        look.changed();
}

} // namespace orvella::simulation
