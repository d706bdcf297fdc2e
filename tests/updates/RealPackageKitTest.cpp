#include "platform/linux/updater/OwnLibrary.h"
#include "platform/linux/updater/PluginUpdater.h"
#include "support/FakeAuthority.h"
#include "support/FakePlatform.h"
#include "support/PackageArchive.h"
#include "support/PackageKitDaemon.h"
#include "support/ShownWindow.h"

#include <QApplication>
#include <QFile>
#include <QLabel>
#include <QPushButton>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const auto kUpdate = u"system-update with password"_s;

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

} // namespace

/// The updater as the program loads it, against a real packagekitd over a system of packages of the test's own.
class RealPackageKitTest final : public QObject {
    Q_OBJECT

private:
    static QWidget* window() { return shownWindow(u"updateWindow"_s); }

    static QString text(const QString& part)
    {
        return window() ? window()->findChild<QLabel*>(part)->text() : QString();
    }

    static QString headline() { return text(u"updateHeadline"_s); }

    static QString detail() { return text(u"updateDetail"_s); }

    static void press(const QString& button)
    {
        QTest::mouseClick(window()->findChild<QPushButton*>(button), Qt::LeftButton);
    }

    void start() { QVERIFY(m_daemon->start(m_archive->configuration())); }

    void offer()
    {
        m_archive->publish({u"orvella"_s, u"1:0.2.0-3"_s});
        start();
        m_updater->checkForUpdates();
        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Version 0.2.0 is available."_s, 20000);
    }

private Q_SLOTS:
    void initTestCase() { m_machine = contentOf(u"/var/lib/dpkg/status"_s); }

    void init()
    {
        m_archive = std::make_unique<PackageArchive>();
        m_archive->install({u"orvella"_s, u"0.0.1-1"_s});
        m_authority = std::make_unique<FakeAuthority>();
        m_daemon = std::make_unique<PackageKitDaemon>();
        m_updater = std::make_unique<PluginUpdater>(
            PluginUpdater::Surroundings {ownLibrary(u"orvella-updater.so"_s)}, m_clock, m_windows);
    }

    void cleanup()
    {
        m_updater.reset();
        m_daemon.reset();
        m_authority.reset();
        m_archive.reset();
        QVERIFY(!window());
        // The machine's own packages are as they were.
        QVERIFY(!m_machine.isEmpty());
        QCOMPARE(contentOf(u"/var/lib/dpkg/status"_s), m_machine);
    }

    void aNewerVersionIsFound()
    {
        offer();

        QCOMPARE(detail(), u"You have version 0.0.1."_s);
        QCOMPARE(m_archive->installedVersion(u"orvella"_s), u"0.0.1-1"_s);
        QCOMPARE(m_authority->questions(), QStringList {u"system-sources-refresh"_s});
    }

    void withoutANewerVersionItIsUpToDate()
    {
        m_archive->publish({u"orvella"_s, u"0.0.1-1"_s});
        m_archive->publish({u"orvella-games"_s, u"7"_s});
        start();

        m_updater->checkForUpdates();

        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Orvella is up to date."_s, 20000);
        QCOMPARE(detail(), u"You have version 0.0.1."_s);
    }

    void aNewerVersionIsInstalled()
    {
        m_archive->install({u"orvella-updater"_s, u"0.0.1-1"_s, u"Depends: orvella\n"_s});
        m_archive->publish({u"orvella-updater"_s, u"1:0.2.0-3"_s, u"Depends: orvella (= 1:0.2.0-3)\n"_s});
        m_archive->install({u"bystander"_s, u"1"_s});
        m_archive->publish({u"bystander"_s, u"2"_s});
        offer();

        press(u"updateInstall"_s);

        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Version 0.2.0 is installed."_s, 30000);
        QCOMPARE(detail(), u"It takes effect when Orvella is started again."_s);
        QCOMPARE(m_authority->questions().constLast(), kUpdate);
        QCOMPARE(m_archive->installedVersion(u"orvella"_s), u"1:0.2.0-3"_s);
        QCOMPARE(m_archive->installedFile(u"orvella"_s), u"1:0.2.0-3"_s);
        QCOMPARE(m_archive->installedVersion(u"orvella-updater"_s), u"1:0.2.0-3"_s);
        // Others' updates are not ours to install.
        QCOMPARE(m_archive->installedVersion(u"bystander"_s), u"1"_s);
    }

    void withoutPermissionNothingIsInstalled()
    {
        m_authority->refused = {u"system-update"_s};
        offer();

        press(u"updateInstall"_s);

        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Version 0.2.0 could not be installed."_s, 20000);
        QCOMPARE(detail(), u"Your system did not allow it."_s);
        QCOMPARE(m_archive->installedVersion(u"orvella"_s), u"0.0.1-1"_s);
    }

    /// PackageKit leaves the question open, but forgets what it was for.
    void aPasswordThatComesAfterTheWindowWasClosedInstallsNothing()
    {
        m_authority->held = {u"system-update"_s};
        offer();
        press(u"updateInstall"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_authority->questions().constLast(), kUpdate, 20000);
        QTRY_COMPARE(detail(), u"Waiting for your permission…"_s);

        press(u"updateClose"_s);
        QTest::qWait(500);
        m_authority->release();
        QTest::qWait(2000);

        QCOMPARE(m_archive->installedVersion(u"orvella"_s), u"0.0.1-1"_s);
    }

    void aPasswordThatComesLateInstallsAllTheSame()
    {
        m_authority->held = {u"system-update"_s};
        offer();
        press(u"updateInstall"_s);
        QTRY_COMPARE_WITH_TIMEOUT(m_authority->questions().constLast(), kUpdate, 20000);
        QTest::qWait(500);

        m_authority->release();

        QTRY_COMPARE_WITH_TIMEOUT(m_archive->installedVersion(u"orvella"_s), u"1:0.2.0-3"_s, 20000);
        QTRY_COMPARE(headline(), u"Version 0.2.0 is installed."_s);
    }

    void aPackageKitThatDiesInTheMiddleIsAnError()
    {
        m_authority->held = {u"system-update"_s};
        offer();
        press(u"updateInstall"_s);
        QTRY_COMPARE_WITH_TIMEOUT(detail(), u"Waiting for your permission…"_s, 20000);

        m_daemon->kill();

        QTRY_COMPARE(headline(), u"Version 0.2.0 could not be installed."_s);
        QCOMPARE(detail(), u"Your system's package service ended before it was done."_s);
    }

    void aListThatMayNotBeRenewedIsMentioned()
    {
        m_authority->refused = {u"system-sources-refresh"_s};
        m_archive->publish({u"orvella"_s, u"1:0.2.0-3"_s});
        start();

        m_updater->checkForUpdates();

        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Orvella is up to date."_s, 20000);
        QCOMPARE(detail(),
            u"You have version 0.0.1. The list of packages could not be renewed, so there may be a newer one."_s);
    }

    void anUpdateThatWouldRemoveOthersIsNotInstalled()
    {
        m_archive->install({u"bystander"_s, u"1"_s});
        m_archive->publish({u"orvella"_s, u"1:0.2.0-3"_s, u"Conflicts: bystander\n"_s});
        start();
        m_updater->checkForUpdates();
        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Version 0.2.0 is available."_s, 20000);

        press(u"updateInstall"_s);

        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Version 0.2.0 could not be installed."_s, 20000);
        QCOMPARE(detail(), u"The update would remove other programs. Your software centre shows which ones."_s);
        QCOMPARE(m_archive->installedVersion(u"bystander"_s), u"1"_s);
        QCOMPARE(m_archive->installedVersion(u"orvella"_s), u"0.0.1-1"_s);
    }

    /// APT's part of PackageKit does not tell of it.
    void aVersionThatTheSystemHoldsBackIsNotOffered()
    {
        m_archive->hold(u"orvella"_s);
        m_archive->publish({u"orvella"_s, u"1:0.2.0-3"_s});
        start();

        m_updater->checkForUpdates();

        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Orvella is up to date."_s, 20000);
    }

    void aProgramThatIsNoPackageCannotBeUpdated()
    {
        m_archive = std::make_unique<PackageArchive>();
        m_archive->publish({u"orvella"_s, u"1:0.2.0-3"_s});
        start();

        m_updater->checkForUpdates();

        QTRY_COMPARE_WITH_TIMEOUT(headline(), u"Orvella could not look for updates."_s, 20000);
        QCOMPARE(detail(),
            u"This Orvella did not come with the packages of your system, so they do not bring its updates."_s);
    }

    void withoutPackageKitTheWindowSaysSo()
    {
        m_updater->checkForUpdates();

        QTRY_COMPARE(headline(), u"Orvella could not look for updates."_s);
        QCOMPARE(
            detail(), u"PackageKit, which installs updates, is not there. Look for updates in your software centre."_s);
    }

private:
    QByteArray m_machine;
    SystemClock m_clock;
    FakeWindows m_windows;
    std::unique_ptr<PackageArchive> m_archive;
    std::unique_ptr<FakeAuthority> m_authority;
    std::unique_ptr<PackageKitDaemon> m_daemon;
    std::unique_ptr<PluginUpdater> m_updater;
};

int main(int argc, char** argv)
{
    // The test's session bus is its system bus as well.
    qputenv("DBUS_SYSTEM_BUS_ADDRESS", qgetenv("DBUS_SESSION_BUS_ADDRESS"));
    const QApplication application(argc, argv);
    RealPackageKitTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "RealPackageKitTest.moc"
