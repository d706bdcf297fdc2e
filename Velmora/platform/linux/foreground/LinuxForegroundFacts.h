#pragma once

#include "platform/ForegroundFacts.h"

#include <QDBusConnection>
#include <QProcessEnvironment>
#include <QString>

#include <functional>

namespace orvella {

/// What lies in front of the viewer. Of an X11 session the lock and the windows are known. Of a Wayland session, where
/// nobody tells a program of other programs' windows, the lock and who keeps the session awake.
class LinuxForegroundFacts final : public ForegroundFacts {
public:
    using Bus = std::function<QDBusConnection()>;

    /// The buses are connected to with the first question to them.
    LinuxForegroundFacts(const QProcessEnvironment& environment, Bus sessionBus, Bus systemBus);

    [[nodiscard]] std::optional<bool> isScreenLocked() const override;
    [[nodiscard]] std::optional<bool> isKeptAwakeForViewing() const override;
    [[nodiscard]] std::optional<qint64> frontApplication() const override;
    [[nodiscard]] std::optional<std::vector<ScreenWindow>> windows() const override;
    [[nodiscard]] std::vector<QSizeF> screens() const override;

private:
    Bus m_sessionBus;
    Bus m_systemBus;
    QString m_session;
    bool m_isWaylandSession;
};

} // namespace orvella
