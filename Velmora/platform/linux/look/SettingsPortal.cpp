#include "platform/linux/look/SettingsPortal.h"

#include <QDBusMessage>
#include <QDBusMetaType>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kInterface = "org.freedesktop.portal.Settings"_L1;

} // namespace

SettingsPortal::SettingsPortal(QDBusConnection bus)
    : m_bus(std::move(bus))
{
    if (!m_bus.isConnected())
        return;
    qDBusRegisterMetaType<PortalSettings>();
    m_owners.setConnection(m_bus);
    m_owners.setWatchMode(QDBusServiceWatcher::WatchForOwnerChange);
    m_owners.addWatchedService(kService);
    connect(&m_owners, &QDBusServiceWatcher::serviceRegistered, this, &SettingsPortal::ask);
    m_bus.connect(
        {}, kPath, kInterface, u"SettingChanged"_s, this, SLOT(settingChanged(QString, QString, QDBusVariant)));
    // The bus may start the portal for it.
    ask();
}

void SettingsPortal::settingChanged(const QString& group, const QString& key, const QDBusVariant& value)
{
    if (!lookNamespaces().contains(group))
        return;
    auto settings = m_settings;
    settings[group].insert(key, value.variant());
    take(std::move(settings));
}

void SettingsPortal::ask()
{
    auto question = QDBusMessage::createMethodCall(kService, kPath, kInterface, u"ReadAll"_s);
    question << lookNamespaces();
    auto* call = new QDBusPendingCallWatcher(m_bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, [this](QDBusPendingCallWatcher* finished) {
        finished->deleteLater();
        const QDBusPendingReply<PortalSettings> reply = *finished;
        if (reply.isValid())
            take(reply.value());
    });
}

void SettingsPortal::take(PortalSettings settings)
{
    m_settings = std::move(settings);
    const auto wishes = portalWishes(m_settings);
    if (std::exchange(m_wishes, wishes) != wishes)
        Q_EMIT changed();
}

} // namespace orvella
