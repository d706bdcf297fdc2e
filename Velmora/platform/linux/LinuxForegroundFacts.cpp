#include "platform/linux/LinuxForegroundFacts.h"

#include "platform/linux/X11Display.h"
#include "platform/linux/X11Foreground.h"

#include <unistd.h>
#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

std::optional<X11Display> displayOf(bool isWayland)
{
    return isWayland ? std::nullopt : X11Display::current();
}

} // namespace

LinuxForegroundFacts::LinuxForegroundFacts(
    const QProcessEnvironment& environment, QDBusConnection sessionBus, QDBusConnection systemBus)
    : m_lock(sessionBus, systemBus, environment.value(u"XDG_SESSION_ID"_s))
    , m_inhibitors(std::move(sessionBus), std::move(systemBus), ::getuid())
    , m_isWaylandSession(isWaylandSession(environment))
{
}

std::optional<bool> LinuxForegroundFacts::isKeptAwakeForViewing() const
{
    return m_isWaylandSession ? m_inhibitors.isForViewing() : std::nullopt;
}

std::optional<qint64> LinuxForegroundFacts::frontApplication() const
{
    const auto display = displayOf(m_isWaylandSession);
    return display ? X11Foreground::frontApplication(*display) : std::nullopt;
}

std::optional<std::vector<ScreenWindow>> LinuxForegroundFacts::windows() const
{
    const auto display = displayOf(m_isWaylandSession);
    return display ? X11Foreground::windows(*display) : std::nullopt;
}

std::vector<QSizeF> LinuxForegroundFacts::screens() const
{
    const auto display = displayOf(m_isWaylandSession);
    return display ? X11Foreground::screens(*display) : std::vector<QSizeF>();
}

} // namespace orvella
