#pragma once

#include <QDBusConnection>

#include <optional>

namespace orvella {

/// Whether somebody keeps the session from going idle for something that people look at. Where nobody tells a program
/// which window covers the screen this comes closest to it: players, presentations and games do that.
///
/// Asked are GNOME's session manager, which Cinnamon and MATE have too, the power management of KDE Plasma, and the
/// login manager, each for what it knows of idleness only: who prevents suspending may as well play music.
class IdleInhibitors final {
public:
    /// The login manager is asked for what this `user` does, by number.
    IdleInhibitors(QDBusConnection sessionBus, QDBusConnection systemBus, uint user);

    /// One voice for it is enough. Nothing where nobody answers within a tenth of a second; GNOME's inhibitors have
    /// another tenth to say what they are. It waits about as long as that at most. No service is started for it. Of a
    /// long list only the beginning is looked at.
    [[nodiscard]] std::optional<bool> isForViewing() const;

private:
    QDBusConnection m_sessionBus;
    QDBusConnection m_systemBus;
    uint m_user;
};

} // namespace orvella
