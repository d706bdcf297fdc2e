#include "support/KeyringDaemon.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusObjectPath>
#include <QDBusReply>
#include <QDir>
#include <QTest>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

const auto kName = u"org.freedesktop.secrets"_s;
const auto kCollection = u"/org/freedesktop/secrets/collection/login"_s;

bool isOnTheBus()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(kName);
}

} // namespace

KeyringDaemon::KeyringDaemon()
{
    m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
}

KeyringDaemon::~KeyringDaemon()
{
    kill();
    QDir(qEnvironmentVariable("XDG_DATA_HOME") + u"/keyrings"_s).removeRecursively();
}

bool KeyringDaemon::start()
{
    return run({u"--unlock"_s}, kPassword);
}

bool KeyringDaemon::startWithoutKeyring()
{
    return run({}, {});
}

bool KeyringDaemon::run(const QStringList& arguments, const QByteArray& input)
{
    m_process.start(u"gnome-keyring-daemon"_s, arguments + QStringList {u"--foreground"_s, u"--components=secrets"_s});
    m_process.write(input);
    m_process.closeWriteChannel();
    return m_process.waitForStarted() && QTest::qWaitFor(isOnTheBus, 20000);
}

void KeyringDaemon::kill()
{
    m_process.kill();
    m_process.waitForFinished();
    if (!QTest::qWaitFor([] { return !isOnTheBus(); }, 20000))
        qFatal("The keyring daemon stays on the bus.");
}

bool KeyringDaemon::lock()
{
    auto call = QDBusMessage::createMethodCall(
        kName, u"/org/freedesktop/secrets"_s, u"org.freedesktop.Secret.Service"_s, u"Lock"_s);
    call << QVariant::fromValue(QList {QDBusObjectPath(kCollection)});
    QDBusConnection::sessionBus().call(call);
    return isLocked();
}

bool KeyringDaemon::isLocked() const
{
    auto call = QDBusMessage::createMethodCall(kName, kCollection, u"org.freedesktop.DBus.Properties"_s, u"Get"_s);
    call << u"org.freedesktop.Secret.Collection"_s << u"Locked"_s;
    const QDBusReply<QDBusVariant> reply = QDBusConnection::sessionBus().call(call);
    return reply.value().variant().toBool();
}

QByteArray KeyringDaemon::secretTool(const QStringList& arguments, const QByteArray& input)
{
    QProcess tool;
    tool.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    tool.start(u"secret-tool"_s, arguments);
    tool.write(input);
    tool.closeWriteChannel();
    if (!tool.waitForFinished(20000))
        qFatal("secret-tool does not end.");
    return tool.readAllStandardOutput();
}

} // namespace orvella
