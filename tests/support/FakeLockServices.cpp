#include "support/FakeLockServices.h"

#include <QDBusMessage>
#include <QUuid>

namespace orvella {

using namespace Qt::StringLiterals;

FakeLockServices::FakeLockServices()
    : m_connectionName(QUuid::createUuid().toString())
    , m_bus(QDBusConnection::connectToBus(QDBusConnection::SessionBus, m_connectionName))
{
    for (const auto& path : {u"/org"_s, u"/StatusNotifierWatcher"_s}) {
        if (!m_bus.registerVirtualObject(path, this, QDBusConnection::SubPath))
            qFatal("There is no session bus.");
    }
    moveToThread(&m_thread);
    m_thread.start();
}

FakeLockServices::~FakeLockServices()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
    m_thread.quit();
    m_thread.wait();
}

void FakeLockServices::answer(const QString& service, const QVariant& value)
{
    offer(service, {Manner::answers, value});
}

void FakeLockServices::refuse(const QString& service)
{
    offer(service, {Manner::refuses, {}});
}

void FakeLockServices::keepSilent(const QString& service)
{
    offer(service, {Manner::keepsSilent, {}});
}

QStringList FakeLockServices::questions() const
{
    const QMutexLocker locker(&m_mutex);
    return m_questions;
}

bool FakeLockServices::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const QMutexLocker locker(&m_mutex);
    QStringList arguments;
    for (const auto& argument : message.arguments())
        arguments.append(argument.toString());
    m_questions.append(
        message.path() + u' ' + message.interface() + u'.' + message.member() + u'(' + arguments.join(u", "_s) + u')');
    // A message does not tell which of its receiver's names it was sent to, but the interface does.
    auto interface = message.interface();
    if (interface == u"org.freedesktop.DBus.Properties")
        interface = arguments.value(0);
    const auto isLoginManager = interface == u"org.freedesktop.login1.Session";
    const auto service = m_services.value(isLoginManager ? u"org.freedesktop.login1"_s : interface);
    if (service.manner == Manner::answers)
        connection.send(message.createReply(service.value));
    if (service.manner == Manner::refuses)
        connection.send(message.createErrorReply(QDBusError::NotSupported, u"not here"_s));
    return true;
}

void FakeLockServices::offer(const QString& name, const Service& service)
{
    {
        const QMutexLocker locker(&m_mutex);
        m_services.insert(name, service);
    }
    if (!m_bus.registerService(name))
        qFatal("Another one has the name of the service.");
}

} // namespace orvella
