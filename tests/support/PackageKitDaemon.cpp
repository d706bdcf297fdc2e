#include "support/PackageKitDaemon.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QProcessEnvironment>
#include <QTest>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

bool isOnTheBus()
{
    return QDBusConnection::systemBus().interface()->isServiceRegistered(u"org.freedesktop.PackageKit"_s);
}

} // namespace

PackageKitDaemon::PackageKitDaemon()
{
    m_process.setProcessChannelMode(QProcess::MergedChannels);
}

PackageKitDaemon::~PackageKitDaemon()
{
    kill();
}

bool PackageKitDaemon::start(const QString& aptConfiguration)
{
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"APT_CONFIG"_s, aptConfiguration);
    m_process.setProcessEnvironment(environment);
    m_process.start(u"/usr/libexec/packagekitd"_s, {u"--disable-timer"_s, u"--keep-environment"_s});
    const auto hasComeOrEnded = [this] { return isOnTheBus() || m_process.state() == QProcess::NotRunning; };
    if (QTest::qWaitFor(hasComeOrEnded, 20000) && isOnTheBus())
        return true;
    qWarning("packagekitd: %s", m_process.readAll().constData());
    return false;
}

void PackageKitDaemon::kill()
{
    if (m_process.state() == QProcess::NotRunning)
        return;
    m_process.kill();
    m_process.waitForFinished();
    if (!QTest::qWaitFor([] { return !isOnTheBus(); }, 20000))
        qFatal("PackageKit stays on the bus.");
}

} // namespace orvella
