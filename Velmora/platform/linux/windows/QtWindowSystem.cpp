#include "platform/linux/windows/QtWindowSystem.h"

#include <QWindow>

#include <utility>

namespace orvella {

QtWindowSystem::QtWindowSystem(Kind kind, std::function<QString()> takeToken)
    : m_kind(kind)
    , m_takeToken(std::move(takeToken))
{
}

void QtWindowSystem::activate(QWindow& window)
{
    const auto token = m_takeToken ? m_takeToken() : QString();
    // This is where Qt looks for it, and takes it away.
    if (m_kind == Kind::wayland && !token.isEmpty())
        qputenv("XDG_ACTIVATION_TOKEN", token.toUtf8());
    window.raise();
    window.requestActivate();
}

} // namespace orvella
