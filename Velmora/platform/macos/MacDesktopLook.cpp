#include "platform/macos/MacDesktopLook.h"

#include <QCoreApplication>
#include <QEvent>

#include <utility>

namespace orvella {

MacDesktopLook::MacDesktopLook(CocoaWorkspace& workspace)
    : m_workspace(workspace)
{
}

DesktopLook::Scheme MacDesktopLook::scheme() const
{
    return m_workspace.look().isDark ? Scheme::dark : Scheme::light;
}

bool MacDesktopLook::isHighContrast() const
{
    return m_workspace.look().isContrastIncreased;
}

bool MacDesktopLook::isMotionReduced() const
{
    return m_workspace.look().isMotionReduced;
}

void MacDesktopLook::watch(std::function<void()> changed)
{
    m_changed = std::move(changed);
    m_known = m_workspace.look();
    // Qt tells of the appearance only.
    m_workspace.watchDisplayOptions([this] { compare(); });
    QCoreApplication::instance()->installEventFilter(this);
}

bool MacDesktopLook::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::ApplicationPaletteChange)
        compare();
    return QObject::eventFilter(watched, event);
}

void MacDesktopLook::compare()
{
    const auto look = m_workspace.look();
    if (std::exchange(m_known, look) != look)
        m_changed();
}

} // namespace orvella
