#include "platform/linux/look/LinuxDesktopLook.h"

#include "platform/DarkBackground.h"

#include <QEvent>
#include <QGuiApplication>
#include <QPalette>
#include <QScreen>

#include <algorithm>
#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

/// Qt's own palette, where the desktop gives none, is a light one.
DesktopLook::Scheme paletteScheme()
{
    const auto window = QGuiApplication::palette().color(QPalette::Window);
    return isDarkBackground(window) ? DesktopLook::Scheme::dark : DesktopLook::Scheme::light;
}

/// How much larger than usual the fonts of this screen are. Xft.dpi and QT_FONT_DPI are in it only where Qt is told not
/// to scale whole windows by them.
double fontScale(const QScreen* screen)
{
    constexpr double kUsualDotsPerInch = 96;
    return screen != nullptr ? screen->logicalDotsPerInch() / kUsualDotsPerInch : 1;
}

} // namespace

LinuxDesktopLook::LinuxDesktopLook(QDBusConnection bus)
    : m_portal(std::move(bus))
{
    if (const auto display = X11Display::current())
        connect(&m_xSettings.emplace(*display), &XSettingsReader::changed, this, &LinuxDesktopLook::update);
    connect(&m_portal, &SettingsPortal::changed, this, &LinuxDesktopLook::update);
    connect(qGuiApp, &QGuiApplication::primaryScreenChanged, this, &LinuxDesktopLook::followScreen);
    qGuiApp->installEventFilter(this);
    followScreen();
}

void LinuxDesktopLook::watch(std::function<void()> changed)
{
    m_changed = std::move(changed);
}

bool LinuxDesktopLook::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == qGuiApp && event->type() == QEvent::ApplicationPaletteChange)
        update();
    return false;
}

void LinuxDesktopLook::followScreen()
{
    disconnect(m_screen);
    if (const auto* const screen = QGuiApplication::primaryScreen())
        m_screen = connect(screen, &QScreen::logicalDotsPerInchChanged, this, &LinuxDesktopLook::update);
    update();
}

LookWishes LinuxDesktopLook::currentLook() const
{
    auto look = joined(m_portal.wishes(), m_xSettings ? m_xSettings->wishes() : LookWishes());
    if (look.scheme == Scheme::unknown)
        look.scheme = paletteScheme();
    // On X11 the desktop has its factor in Xft.dpi as well.
    const bool isWayland = QGuiApplication::platformName().startsWith(u"wayland"_s);
    constexpr double kMost = 3;
    look.textScale =
        std::clamp(fontScale(QGuiApplication::primaryScreen()) * (isWayland ? look.textScale : 1), 1.0, kMost);
    return look;
}

void LinuxDesktopLook::update()
{
    const auto look = currentLook();
    if (std::exchange(m_look, look) == look || !m_changed)
        return;
    // A copy, because the listener may replace itself.
    const auto changed = m_changed;
    changed();
}

} // namespace orvella
