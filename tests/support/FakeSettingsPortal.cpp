#include "support/FakeSettingsPortal.h"

#include <QDBusMetaType>
#include <QDBusVariant>
#include <QUuid>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kService = "org.freedesktop.portal.Desktop"_L1;
constexpr auto kPath = "/org/freedesktop/portal/desktop"_L1;
constexpr auto kInterface = "org.freedesktop.portal.Settings"_L1;

} // namespace

FakeSettingsPortal::FakeSettingsPortal()
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName))
{
    qDBusRegisterMetaType<QMap<QString, QVariantMap>>();
}

FakeSettingsPortal::~FakeSettingsPortal()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
}

void FakeSettingsPortal::start()
{
    if (!m_bus.registerVirtualObject(kPath, this) || !m_bus.registerService(kService))
        qFatal("There is another portal on the bus.");
}

void FakeSettingsPortal::stop()
{
    m_bus.unregisterService(kService);
    m_bus.unregisterObject(kPath);
}

void FakeSettingsPortal::answer()
{
    m_isHolding = false;
    for (const auto& question : std::exchange(m_held, {}))
        m_bus.send(settingsFor(question));
}

void FakeSettingsPortal::change(const QString& group, const QString& key, const QVariant& value)
{
    put(group, key, value);
    auto signal = QDBusMessage::createSignal(kPath, kInterface, u"SettingChanged"_s);
    signal << group << key << QVariant::fromValue(QDBusVariant(value));
    m_bus.send(signal);
}

bool FakeSettingsPortal::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    if (message.interface() != kInterface || message.member() != u"ReadAll")
        return false;
    ++m_questions;
    if (m_isHolding)
        m_held.append(message);
    else
        m_bus.send(settingsFor(message));
    return true;
}

QDBusMessage FakeSettingsPortal::settingsFor(const QDBusMessage& question) const
{
    QMap<QString, QVariantMap> wanted;
    for (const auto& group : question.arguments().value(0).toStringList()) {
        if (m_settings.contains(group))
            wanted.insert(group, m_settings.value(group));
    }
    return question.createReply(QVariant::fromValue(wanted));
}

} // namespace orvella
