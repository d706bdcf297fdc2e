#pragma once

#include "platform/linux/look/PortalSettings.h"

#include <QDBusConnection>
#include <QDBusServiceWatcher>
#include <QDBusVariant>
#include <QObject>

namespace orvella {

/// The desktop's settings, followed through its portal on the session bus.
///
/// Nothing here waits: until the portal has answered, and for as long as there is none, it says nothing. A portal that
/// ends has said what it said.
class SettingsPortal final : public QObject {
    Q_OBJECT

public:
    explicit SettingsPortal(QDBusConnection bus);

    [[nodiscard]] const LookWishes& wishes() const { return m_wishes; }

Q_SIGNALS:
    /// Only when the wishes are others than before.
    void changed();

private Q_SLOTS:
    void settingChanged(const QString& group, const QString& key, const QDBusVariant& value);

private:
    void ask();
    void take(PortalSettings settings);

    QDBusConnection m_bus;
    QDBusServiceWatcher m_owners;
    PortalSettings m_settings;
    LookWishes m_wishes;
};

} // namespace orvella
