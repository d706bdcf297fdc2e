#include "support/FakePackageKit.h"

#include <QDBusObjectPath>
#include <QUuid>

#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kService = "org.freedesktop.PackageKit"_L1;
constexpr auto kTransaction = "org.freedesktop.PackageKit.Transaction"_L1;
constexpr qulonglong kSimulate = 4;

QString written(const QVariant& argument)
{
    return argument.metaType() == QMetaType::fromType<QStringList>() ? argument.toStringList().join(u", "_s)
                                                                     : argument.toString();
}

} // namespace

FakePackageKit::FakePackageKit()
    : m_bus(QString())
{
}

FakePackageKit::~FakePackageKit()
{
    stop();
}

void FakePackageKit::start()
{
    m_connectionName = QUuid::createUuid().toString();
    m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName);
    if (!m_bus.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath) || !m_bus.registerService(kService))
        qFatal("There is another PackageKit on the bus.");
}

void FakePackageKit::stop()
{
    if (!m_bus.isConnected())
        return;
    m_bus.unregisterService(kService);
    m_bus.unregisterObject(u"/"_s, QDBusConnection::UnregisterTree);
    m_bus = QDBusConnection(QString());
    QDBusConnection::disconnectFromBus(m_connectionName);
}

QStringList FakePackageKit::requests() const
{
    auto requests = m_calls;
    requests.removeIf(
        [](const QString& call) { return call.startsWith("CreateTransaction"_L1) || call.startsWith("SetHints"_L1); });
    return requests;
}

void FakePackageKit::tell(const QVariantMap& properties)
{
    auto signal = QDBusMessage::createSignal(m_path, u"org.freedesktop.DBus.Properties"_s, u"PropertiesChanged"_s);
    signal << QString(kTransaction) << properties << QStringList();
    m_bus.send(signal);
}

void FakePackageKit::tellPackage(const Package& package)
{
    signal(u"Package"_s, {package.info, package.id, u"Pays its viewer"_s});
}

void FakePackageKit::tellItem()
{
    signal(u"ItemProgress"_s, {u"orvella;1;all;local"_s, 8U, 50U});
}

void FakePackageKit::fail(uint code, const QString& details)
{
    signal(u"ErrorCode"_s, {code, details});
}

void FakePackageKit::finish(uint exit)
{
    signal(u"Finished"_s, {exit, 5U});
}

void FakePackageKit::finishAsStranger(uint exit)
{
    auto signal = QDBusMessage::createSignal(m_path, kTransaction, u"Finished"_s);
    signal << exit << 5U;
    QDBusConnection::sessionBus().send(signal);
}

bool FakePackageKit::handleMessage(const QDBusMessage& message, const QDBusConnection&)
{
    QStringList arguments;
    for (const auto& argument : message.arguments())
        arguments.append(written(argument));
    m_calls.append(message.member() + u'(' + arguments.join(u", "_s) + u')');
    if (isSilent)
        return true;
    if (message.member() == "CreateTransaction"_L1) {
        m_path = u"/%1_fake"_s.arg(++m_transactions);
        m_bus.send(refusal.isEmpty() ? message.createReply(QVariant::fromValue(QDBusObjectPath(m_path)))
                                     : message.createErrorReply(refusal, u"not here"_s));
        return true;
    }
    const bool isRehearsal =
        message.member() == "UpdatePackages"_L1 && (message.arguments().constFirst().toULongLong() & kSimulate) != 0;
    answer(message, isRehearsal ? u"Simulate"_s : message.member());
    return true;
}

void FakePackageKit::answer(const QDBusMessage& message, const QString& name)
{
    const auto script = scripts.value(name);
    if (!script.refusal.isEmpty()) {
        m_bus.send(message.createErrorReply(script.refusal, u"not that"_s));
        return;
    }
    m_bus.send(message.createReply());
    if (name == "SetHints"_L1 || name == "Cancel"_L1 || script.isHeld)
        return;
    for (const auto& package : script.packages)
        tellPackage(package);
    if (script.error)
        fail(script.error->first, script.error->second);
    finish(script.exit);
}

void FakePackageKit::signal(const QString& name, const QVariantList& arguments)
{
    auto signal = QDBusMessage::createSignal(m_path, kTransaction, name);
    signal.setArguments(arguments);
    m_bus.send(signal);
}

} // namespace orvella
