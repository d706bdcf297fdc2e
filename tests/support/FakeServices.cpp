#include "support/FakeServices.h"

#include <QDBusMessage>
#include <QUuid>

namespace orvella {

using namespace Qt::StringLiterals;

FakeServices::FakeServices()
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

FakeServices::~FakeServices()
{
    QDBusConnection::disconnectFromBus(m_connectionName);
    m_thread.quit();
    m_thread.wait();
}

void FakeServices::answer(const QString& service, const QString& call, const QVariant& value)
{
    offer(service, call, {Manner::answers, value});
}

void FakeServices::refuse(const QString& service, const QString& call)
{
    offer(service, call, {Manner::refuses, {}});
}

void FakeServices::keepSilent(const QString& service, const QString& call)
{
    offer(service, call, {Manner::keepsSilent, {}});
}

QStringList FakeServices::questions() const
{
    const QMutexLocker locker(&m_mutex);
    return m_questions;
}

bool FakeServices::handleMessage(const QDBusMessage& message, const QDBusConnection& connection)
{
    const QMutexLocker locker(&m_mutex);
    QStringList arguments;
    for (const auto& argument : message.arguments())
        arguments.append(argument.toString());
    const auto call = message.path() + u' ' + message.interface() + u'.' + message.member();
    m_questions.append(call + u'(' + arguments.join(u", "_s) + u')');
    // A message does not tell which of its receiver's names it was sent to, but the interface does.
    const bool isForLoginManager = message.interface() == u"org.freedesktop.DBus.Properties";
    const auto ofService = m_behaviours.value(isForLoginManager ? u"org.freedesktop.login1"_s : message.interface());
    const auto behaviour = m_behaviours.value(call, ofService);
    if (behaviour.manner == Manner::answers)
        connection.send(message.createReply(behaviour.value));
    if (behaviour.manner == Manner::refuses)
        connection.send(message.createErrorReply(QDBusError::NotSupported, u"not here"_s));
    return true;
}

void FakeServices::offer(const QString& service, const QString& call, const Behaviour& behaviour)
{
    {
        const QMutexLocker locker(&m_mutex);
        m_behaviours.insert(call.isEmpty() ? service : call, behaviour);
    }
    if (!m_bus.registerService(service))
        qFatal("Another one has the name of the service.");
}

} // namespace orvella
