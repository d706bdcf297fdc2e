#pragma once

#include "platform/ForegroundFacts.h"
#include "platform/linux/SessionLock.h"

#include <QProcessEnvironment>

namespace orvella {

/// What lies in front of the viewer of an X11 session. Of a Wayland session only the lock is known: nobody tells a
/// program of other programs' windows there.
class LinuxForegroundFacts final : public ForegroundFacts {
public:
    LinuxForegroundFacts(const QProcessEnvironment& environment, QDBusConnection sessionBus, QDBusConnection systemBus);

    [[nodiscard]] std::optional<bool> isScreenLocked() const override { return m_lock.isLocked(); }

    [[nodiscard]] std::optional<qint64> frontApplication() const override;
    [[nodiscard]] std::optional<std::vector<ScreenWindow>> windows() const override;
    [[nodiscard]] std::vector<QSizeF> screens() const override;

private:
    SessionLock m_lock;
    bool m_isWaylandSession;
};

} // namespace orvella
