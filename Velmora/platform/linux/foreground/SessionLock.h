#pragma once

#include <QDBusConnection>
#include <QString>

#include <optional>

namespace orvella {

/// Whether the viewer's session is locked, as the login manager and the desktop's screen saver say it.
class SessionLock final {
public:
    /// `sessionId` names the session to the login manager, as XDG_SESSION_ID does; empty for the one that the program
    /// runs in.
    SessionLock(QDBusConnection sessionBus, QDBusConnection systemBus, const QString& sessionId);

    /// One voice for a lock is enough. Nothing where nobody answers within a tenth of a second, which is also about as
    /// long as this waits. No service is started for it.
    [[nodiscard]] std::optional<bool> isLocked() const;

private:
    QDBusConnection m_sessionBus;
    QDBusConnection m_systemBus;
    QString m_sessionPath;
};

} // namespace orvella
