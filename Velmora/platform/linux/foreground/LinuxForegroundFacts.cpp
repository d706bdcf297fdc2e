#include "platform/linux/foreground/LinuxForegroundFacts.h"

#include "platform/linux/foreground/IdleInhibitors.h"
#include "platform/linux/foreground/SessionLock.h"
#include "platform/linux/foreground/X11Foreground.h"
#include "platform/linux/x11/X11Display.h"

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

LinuxForegroundFacts::LinuxForegroundFacts(const QProcessEnvironment& environment, Bus sessionBus, Bus systemBus)
    : m_sessionBus(std::move(sessionBus))
    , m_systemBus(std::move(systemBus))
    , m_session(environment.value(u"XDG_SESSION_ID"_s))
    , m_isWaylandSession(isWaylandSession(environment))
{
}

std::optional<bool> LinuxForegroundFacts::isScreenLocked() const
{
    return SessionLock(m_sessionBus(), m_systemBus(), m_session).isLocked();
}

std::optional<bool> LinuxForegroundFacts::isKeptAwakeForViewing() const
{
    if (!m_isWaylandSession)
        return std::nullopt;
    return IdleInhibitors(m_sessionBus(), m_systemBus(), ::getuid()).isForViewing();
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
