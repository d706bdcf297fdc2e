#include "support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDir>

#include <csignal>
#include <sys/types.h>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

const auto kConnectionName = u"private-bus"_s;

void write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("The folder of the bus cannot be written to.");
}

} // namespace

PrivateBus::PrivateBus(const QByteArray& rules)
{
    QDir(m_folder.path()).mkdir(u"services"_s);
    const auto configuration = m_folder.filePath(u"bus.conf"_s);
    write(configuration,
        "<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen><auth>EXTERNAL</auth><servicedir>"
            + m_folder.filePath(u"services"_s).toUtf8()
            + "</servicedir><policy context='default'><allow send_destination='*' eavesdrop='true'/>"
              "<allow eavesdrop='true'/></policy>"
            + rules + "</busconfig>");
    m_daemon.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    m_daemon.start(u"dbus-daemon"_s, {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + configuration});
    if (!m_daemon.waitForReadyRead())
        qFatal("The bus does not start.");
    m_address = QString::fromUtf8(m_daemon.readLine().trimmed());
}

PrivateBus::~PrivateBus()
{
    kill();
}

void PrivateBus::addService(const QString& name, const QString& commandLine)
{
    write(m_folder.filePath(u"services/%1.service"_s.arg(name)),
        u"[D-BUS Service]\nName=%1\nExec=%2\n"_s.arg(name, commandLine).toUtf8());
    // It finds new files by itself only after a while.
    QDBusConnection::connectToBus(m_address, kConnectionName)
        .call(QDBusMessage::createMethodCall(
            u"org.freedesktop.DBus"_s, u"/org/freedesktop/DBus"_s, u"org.freedesktop.DBus"_s, u"ReloadConfig"_s));
    QDBusConnection::disconnectFromBus(kConnectionName);
}

void PrivateBus::kill()
{
    if (m_daemon.state() == QProcess::NotRunning)
        return;
    m_daemon.kill();
    m_daemon.waitForFinished();
}

void PrivateBus::suspend()
{
    send(SIGSTOP);
}

void PrivateBus::resume()
{
    send(SIGCONT);
}

void PrivateBus::send(int signal)
{
    ::kill(static_cast<pid_t>(m_daemon.processId()), signal);
}

} // namespace orvella
