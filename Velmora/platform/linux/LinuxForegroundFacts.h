#pragma once

#include "platform/ForegroundFacts.h"
#include "platform/linux/IdleInhibitors.h"
#include "platform/linux/SessionLock.h"

#include <QProcessEnvironment>

namespace orvella {

/// What lies in front of the viewer. Of an X11 session the lock and the windows are known. Of a Wayland session, where
/// nobody tells a program of other programs' windows, the lock and who keeps the session awake.
class LinuxForegroundFacts final : public ForegroundFacts {
public:
    LinuxForegroundFacts(const QProcessEnvironment& environment, QDBusConnection sessionBus, QDBusConnection systemBus);

    [[nodiscard]] std::optional<bool> isScreenLocked() const override { return m_lock.isLocked(); }

    [[nodiscard]] std::optional<bool> isKeptAwakeForViewing() const override;
    [[nodiscard]] std::optional<qint64> frontApplication() const override;
    [[nodiscard]] std::optional<std::vector<ScreenWindow>> windows() const override;
    [[nodiscard]] std::vector<QSizeF> screens() const override;

private:
    SessionLock m_lock;
    IdleInhibitors m_inhibitors;
    bool m_isWaylandSession;
};

} // namespace orvella
