#include "platform/macos/MacForegroundFacts.h"

#include "platform/macos/CocoaForeground.h"

namespace orvella {

namespace {

QSizeF sizeOf(const CocoaForeground::Size& size)
{
    return {size.width, size.height};
}

ScreenWindow windowOf(const CocoaForeground::Window& window)
{
    return {window.owner, window.layer, window.size ? std::optional(sizeOf(*window.size)) : std::nullopt};
}

} // namespace

MacForegroundFacts::MacForegroundFacts(const CocoaForeground& foreground)
    : m_foreground(foreground)
{
}

std::optional<bool> MacForegroundFacts::isScreenLocked() const
{
    return asBoolean(m_foreground.screenLock());
}

std::optional<qint64> MacForegroundFacts::frontApplication() const
{
    return m_foreground.frontProcess();
}

std::optional<std::vector<ScreenWindow>> MacForegroundFacts::windows() const
{
    const auto windows = m_foreground.windows();
    if (!windows)
        return std::nullopt;
    std::vector<ScreenWindow> result;
    for (const auto& window : *windows)
        result.push_back(windowOf(window));
    return result;
}

std::vector<QSizeF> MacForegroundFacts::screens() const
{
    std::vector<QSizeF> result;
    for (const auto& screen : m_foreground.screens())
        result.push_back(sizeOf(screen));
    return result;
}

} // namespace orvella
