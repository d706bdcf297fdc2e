#include "platform/DisplayChoice.h"

#include <QByteArrayList>
#include <QGuiApplication>

namespace orvella {

namespace {

constexpr auto kVariable = "QT_QPA_PLATFORM";
constexpr auto kNothingShown = "offscreen";
constexpr auto kDesktop = "XDG_CURRENT_DESKTOP";

QByteArrayList displaysOfTheSession()
{
    QByteArrayList displays;
    // Under Wayland a program may not say where its windows go, so it uses the X server of the session where there is
    // one: a popover that hangs from nothing would be shown in the middle of the screen, or tiled.
    if (!qEnvironmentVariableIsEmpty("DISPLAY"))
        displays.append("xcb");
    if (!qEnvironmentVariableIsEmpty("WAYLAND_DISPLAY"))
        displays.append("wayland");
    return displays;
}

/// By these names Qt loads GTK 3 for its theme: 65 MiB and as many milliseconds, for a font and a palette that the
/// desktop's settings tell as well. Plasma's theme is built into Qt.
bool bringsGtk(const QByteArray& desktop)
{
    return !desktop.isEmpty() && !desktop.split(':').contains("KDE");
}

} // namespace

DisplayChoice::DisplayChoice()
    : m_former(qgetenv(kVariable))
    , m_desktop(qgetenv(kDesktop))
{
    if (bringsGtk(m_desktop))
        qunsetenv(kDesktop);
    auto displays = m_former.isEmpty() ? displaysOfTheSession() : QByteArrayList {m_former};
    // Qt ends the program with a core dump where no display lets it in; this one always does.
    if (!m_former.contains(kNothingShown))
        displays.append(kNothingShown);
    qputenv(kVariable, displays.join(';'));
}

DisplayChoice::~DisplayChoice()
{
    if (m_former.isEmpty())
        qunsetenv(kVariable);
    else
        qputenv(kVariable, m_former);
    if (!m_desktop.isEmpty())
        qputenv(kDesktop, m_desktop);
}

bool DisplayChoice::isEmpty() const
{
    return m_former.isEmpty() && displaysOfTheSession().isEmpty();
}

bool DisplayChoice::isRefused() const
{
    return !m_former.contains(kNothingShown) && QGuiApplication::platformName() == QLatin1String(kNothingShown);
}

} // namespace orvella
