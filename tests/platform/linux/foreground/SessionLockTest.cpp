#include "platform/linux/foreground/SessionLock.h"

#include "base/Clock.h"
#include "support/FakeServices.h"

#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDBusVariant>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto kLoginManager = u"org.freedesktop.login1"_s;

QVariant hint(const QVariant& value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

QDBusConnection bus()
{
    return QDBusConnection::sessionBus();
}

QDBusConnection nowhere()
{
    return QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s);
}

} // namespace

/// The session bus stands for both buses.
class SessionLockTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_services = std::make_unique<FakeServices>(); }

    void cleanup() { m_services.reset(); }

    void theLoginManagersWordIsEnough()
    {
        m_services->answer(kLoginManager, hint(true));
        QCOMPARE(isLocked(), true);

        m_services->answer(u"org.gnome.ScreenSaver"_s, false);
        QCOMPARE(isLocked(), true);

        m_services->answer(kLoginManager, hint(false));
        QCOMPARE(isLocked(), false);
    }

    void aScreenSaversWordIsEnough_data()
    {
        QTest::addColumn<QString>("service");
        for (const auto& desktop : {u"freedesktop"_s, u"gnome"_s, u"cinnamon"_s, u"mate"_s, u"xfce"_s})
            QTest::newRow(qPrintable(desktop)) << u"org.%1.ScreenSaver"_s.arg(desktop);
    }

    void aScreenSaversWordIsEnough()
    {
        QFETCH(const QString, service);
        m_services->answer(kLoginManager, hint(false));

        m_services->answer(service, true);
        QCOMPARE(isLocked(), true);

        m_services->answer(service, false);
        QCOMPARE(isLocked(), false);
    }

    void aScreenSaverIsAskedAtItsOwnPlace()
    {
        m_services->answer(u"org.xfce.ScreenSaver"_s, true);

        QCOMPARE(isLocked(), true);

        QCOMPARE(m_services->questions(), QStringList {u"/org/xfce/ScreenSaver org.xfce.ScreenSaver.GetActive()"_s});
    }

    void theLoginManagerIsAskedForThisSession_data()
    {
        QTest::addColumn<QString>("id");
        QTest::addColumn<QString>("name");
        QTest::newRow("a session that is not named") << u""_s << u"auto"_s;
        QTest::newRow("a name that begins with a letter") << u"c2"_s << u"c2"_s;
        QTest::newRow("a name that begins with a digit") << u"12"_s << u"_312"_s;
        QTest::newRow("a name with other characters") << u"a-b/ä"_s << u"a_2db_2f_c3_a4"_s;
    }

    void theLoginManagerIsAskedForThisSession()
    {
        QFETCH(const QString, id);
        QFETCH(const QString, name);
        m_services->answer(kLoginManager, hint(true));

        QCOMPARE(SessionLock(bus(), bus(), id).isLocked(), true);

        QCOMPARE(m_services->questions(),
            QStringList {u"/org/freedesktop/login1/session/%1 org.freedesktop.DBus.Properties.Get("
                         "org.freedesktop.login1.Session, LockedHint)"_s.arg(name)});
    }

    void whereNobodyAnswersNothingIsKnown()
    {
        QCOMPARE(isLocked(), std::nullopt);

        m_services->refuse(kLoginManager);
        m_services->refuse(u"org.freedesktop.ScreenSaver"_s);
        QCOMPARE(isLocked(), std::nullopt);
    }

    void withoutABusNothingIsKnown() { QCOMPARE(SessionLock(nowhere(), nowhere(), {}).isLocked(), std::nullopt); }

    void oneBusIsEnough()
    {
        m_services->answer(kLoginManager, hint(true));
        m_services->answer(u"org.mate.ScreenSaver"_s, false);

        QCOMPARE(SessionLock(nowhere(), bus(), {}).isLocked(), true);
        QCOMPARE(SessionLock(bus(), nowhere(), {}).isLocked(), false);
    }

    void anAnswerOfAnotherKindIsNone_data()
    {
        QTest::addColumn<QVariant>("value");
        QTest::newRow("a number") << QVariant(1);
        QTest::newRow("a text") << QVariant(u"true"_s);
        QTest::newRow("a number in a variant") << hint(1);
        QTest::newRow("a text in a variant") << hint(u"true"_s);
        QTest::newRow("a variant in a variant") << hint(hint(true));
        QTest::newRow("a list") << QVariant(QStringList {u"true"_s});
    }

    void anAnswerOfAnotherKindIsNone()
    {
        QFETCH(const QVariant, value);

        m_services->answer(kLoginManager, value);
        m_services->answer(u"org.gnome.ScreenSaver"_s, value);
        QCOMPARE(isLocked(), std::nullopt);

        m_services->answer(u"org.mate.ScreenSaver"_s, false);
        QCOMPARE(isLocked(), false);
    }

    void servicesThatKeepSilentAreWaitedForOnlyShortlyAndTogether()
    {
        const SystemClock clock;
        m_services->keepSilent(kLoginManager);
        for (const auto& desktop : {u"freedesktop"_s, u"gnome"_s, u"cinnamon"_s, u"mate"_s, u"xfce"_s})
            m_services->keepSilent(u"org.%1.ScreenSaver"_s.arg(desktop));
        const SessionLock lock(bus(), bus(), {});

        const auto start = clock.now();
        QCOMPARE(lock.isLocked(), std::nullopt);
        const auto pause = clock.now() - start;

        QVERIFY(pause >= 80ms);
        QVERIFY(pause < 400ms);
    }

    void aServiceThatKeepsSilentHidesNoOther()
    {
        m_services->keepSilent(kLoginManager);
        m_services->answer(u"org.gnome.ScreenSaver"_s, true);

        QCOMPARE(isLocked(), true);
    }

    void noServiceIsStartedForIt()
    {
        QTemporaryDir folder;
        QProcess daemon;
        QVERIFY(startBusWithServices(daemon, folder));
        const auto address = QString::fromUtf8(daemon.readLine().trimmed());
        const auto other = QDBusConnection::connectToBus(address, u"other"_s);
        QVERIFY(other.isConnected());

        QCOMPARE(SessionLock(other, other, {}).isLocked(), std::nullopt);
        QTest::qWait(300);
        QVERIFY(!QFile::exists(folder.filePath(u"started"_s)));

        // It would have been.
        other.asyncCall(QDBusMessage::createMethodCall(
            u"org.gnome.ScreenSaver"_s, u"/"_s, u"org.gnome.ScreenSaver"_s, u"GetActive"_s));
        QTRY_VERIFY(QFile::exists(folder.filePath(u"started"_s)));
        QDBusConnection::disconnectFromBus(u"other"_s);
        daemon.kill();
        daemon.waitForFinished();
    }

private:
    [[nodiscard]] std::optional<bool> isLocked() const { return SessionLock(bus(), bus(), {}).isLocked(); }

    static bool startBusWithServices(QProcess& daemon, const QTemporaryDir& folder)
    {
        const auto write = [&folder](const QString& name, const QString& text) {
            QFile file(folder.filePath(name));
            return file.open(QIODevice::WriteOnly) && file.write(text.toUtf8()) > 0;
        };
        const auto service = u"[D-BUS Service]\nName=%1\nExec=/bin/touch %2\n"_s;
        const bool isWritten = write(u"bus.conf"_s,
                                   u"<busconfig><type>session</type><listen>unix:tmpdir=/tmp</listen>"
                                   "<auth>EXTERNAL</auth><servicedir>%1</servicedir><policy context='default'>"
                                   "<allow send_destination='*' eavesdrop='true'/><allow eavesdrop='true'/>"
                                   "<allow own='*'/></policy></busconfig>"_s.arg(folder.path()))
            && write(u"login.service"_s, service.arg(kLoginManager, folder.filePath(u"started"_s)))
            && write(u"saver.service"_s, service.arg(u"org.gnome.ScreenSaver"_s, folder.filePath(u"started"_s)));
        daemon.start(u"dbus-daemon"_s,
            {u"--nofork"_s, u"--print-address"_s, u"--config-file="_s + folder.filePath(u"bus.conf"_s)});
        return isWritten && daemon.waitForStarted() && daemon.waitForReadyRead();
    }

    std::unique_ptr<FakeServices> m_services;
};

QTEST_GUILESS_MAIN(SessionLockTest)

#include "SessionLockTest.moc"
