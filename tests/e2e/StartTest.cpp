#include "support/PrivateBus.h"
#include "support/ProgramProcess.h"
#include "support/VisibleWindows.h"

#include "base/ApplicationId.h"
#include "platform/linux/files/DesktopEntry.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDir>
#include <QTest>

#include <csignal>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;
/// Within which a window would have come that is not wanted.
constexpr int kPauseMs = 700;

const auto kWithoutWindow = QStringList {u"--set"_s, u"showLaunchWindowAtStartup=false"_s};

/// The program as a bus starts it, with a home of its own.
class ActivatedProgram final {
public:
    explicit ActivatedProgram(const QStringList& options = {})
    {
        const QStringList words {u"/usr/bin/env"_s, u"XDG_CONFIG_HOME="_s + m_home.filePath(u"config"_s),
            u"XDG_STATE_HOME="_s + m_home.filePath(u"state"_s), ProgramProcess::path(), u"--set"_s,
            u"apiBaseURL=http://127.0.0.1:9"_s};
        m_bus.addService(kApplicationId, (words + options).join(u' '));
        m_connection = QDBusConnection::connectToBus(m_bus.address(), u"activated"_s);
    }

    ~ActivatedProgram()
    {
        if (const auto process = id(); process > 0) {
            ::kill(static_cast<pid_t>(process), SIGTERM);
            if (!QTest::qWaitFor([this] { return id() == 0; }, kPatienceMs))
                qFatal("The program does not end.");
        }
        QDBusConnection::disconnectFromBus(u"activated"_s);
    }

    [[nodiscard]] bool call(const QString& method, const QVariantList& arguments)
    {
        auto call = QDBusMessage::createMethodCall(
            kApplicationId, u"/io/orvella/Orvella"_s, u"org.freedesktop.Application"_s, method);
        call.setArguments(arguments);
        return m_connection.call(call).type() == QDBusMessage::ReplyMessage;
    }

    [[nodiscard]] bool activate() { return call(u"Activate"_s, {QVariantMap()}); }

    [[nodiscard]] bool perform(const QString& action)
    {
        return call(u"ActivateAction"_s, {action, QVariantList(), QVariantMap()});
    }

    /// The program's process; 0 where there is none.
    [[nodiscard]] qint64 id() const
    {
        const auto reply = m_connection.interface()->servicePid(kApplicationId);
        return reply.isValid() ? reply.value() : 0;
    }

    [[nodiscard]] int windows() const { return visibleWindowsOf(id()); }

private:
    QTemporaryDir m_home;
    PrivateBus m_bus;
    QDBusConnection m_connection {QString()};
};

} // namespace

/// The real program on a real display: how it is started, and started again.
class StartTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_profile.emplace(); }

    void aStartShowsWhatItIsFor_data()
    {
        QTest::addColumn<QStringList>("extra");
        QTest::addColumn<int>("windows");
        QTest::newRow("by the viewer") << QStringList {} << 1;
        QTest::newRow("by the viewer, without the window") << kWithoutWindow << 0;
        QTest::newRow("by the session") << QStringList {u"--autostart"_s} << 1;
        QTest::newRow("by the session, without the window") << kWithoutWindow + QStringList {u"--autostart"_s} << 0;
        QTest::newRow("for the settings") << QStringList {u"--settings"_s} << 1;
        QTest::newRow("for the settings, without the window") << kWithoutWindow + QStringList {u"--settings"_s} << 1;
        QTest::newRow("for the ad") << QStringList {u"--open-ad"_s} << 2;
        QTest::newRow("for the ad, without the window") << kWithoutWindow + QStringList {u"--open-ad"_s} << 1;
    }

    void aStartShowsWhatItIsFor()
    {
        QFETCH(const QStringList, extra);
        QFETCH(const int, windows);

        ProgramProcess program(options() + extra);

        QTRY_VERIFY_WITH_TIMEOUT(hasStarted(), kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), windows, kPatienceMs);
        QTest::qWait(kPauseMs);
        QCOMPARE(visibleWindowsOf(program.id()), windows);
    }

    void aLaterStartHasTheRunningProgramShowIt_data()
    {
        QTest::addColumn<QStringList>("extra");
        QTest::addColumn<int>("windows");
        QTest::newRow("by the viewer") << QStringList {} << 1;
        QTest::newRow("by the session") << QStringList {u"--autostart"_s} << 0;
        QTest::newRow("for the settings") << QStringList {u"--settings"_s} << 1;
        QTest::newRow("for the ad") << QStringList {u"--open-ad"_s} << 1;
    }

    void aLaterStartHasTheRunningProgramShowIt()
    {
        QFETCH(const QStringList, extra);
        QFETCH(const int, windows);
        ProgramProcess program(options() + kWithoutWindow);
        QTRY_VERIFY_WITH_TIMEOUT(hasStarted(), kPatienceMs);

        ProgramProcess second(options() + extra);
        const auto secondId = second.id();

        QCOMPARE(second.exitCode(), 0);
        QCOMPARE(second.errors(), QString());
        QCOMPARE(visibleWindowsOf(secondId), 0);
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), windows, kPatienceMs);
        QTest::qWait(kPauseMs);
        QCOMPARE(visibleWindowsOf(program.id()), windows);
    }

    void aStartByTheBusIsALaunch()
    {
        ActivatedProgram program;

        QVERIFY(program.activate());

        QTRY_COMPARE_WITH_TIMEOUT(program.windows(), 1, kPatienceMs);
        QTest::qWait(kPauseMs);
        QCOMPARE(program.windows(), 1);
    }

    void theWindowThatIsTurnedOffComesWithTheSecondActivation()
    {
        ActivatedProgram program(kWithoutWindow);

        QVERIFY(program.activate());
        QTest::qWait(kPauseMs);
        QCOMPARE(program.windows(), 0);

        QVERIFY(program.activate());
        QTRY_COMPARE_WITH_TIMEOUT(program.windows(), 1, kPatienceMs);
    }

    void aStartByTheBusForAnActionDoesIt_data()
    {
        QTest::addColumn<QString>("action");
        QTest::addColumn<int>("windows");
        QTest::newRow("the ad") << u"open-ad"_s << 1;
        QTest::newRow("the settings") << u"settings"_s << 1;
        QTest::newRow("unknown") << u"dance"_s << 0;
    }

    void aStartByTheBusForAnActionDoesIt()
    {
        QFETCH(const QString, action);
        QFETCH(const int, windows);
        ActivatedProgram program(kWithoutWindow);

        QVERIFY(program.perform(action));

        QTRY_COMPARE_WITH_TIMEOUT(program.windows(), windows, kPatienceMs);
        QTest::qWait(kPauseMs);
        QCOMPARE(program.windows(), windows);
    }

    void aDeadWaylandDisplayBesideALiveXServerIsNoObstacle()
    {
        ProgramProcess program(options(), {{u"QT_QPA_PLATFORM"_s, {}}, {u"WAYLAND_DISPLAY"_s, u"nowhere"_s}});

        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);
    }

    void itsWindowsAreTheDesktopEntrys()
    {
        const auto entry =
            DesktopEntry::read(QStringLiteral(ORVELLA_SOURCE_DIR "/packaging/linux/io.orvella.Orvella.desktop"));
        QVERIFY(entry);
        ProgramProcess program(options());
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);

        QProcess search;
        search.start(u"xdotool"_s,
            {u"search"_s, u"--onlyvisible"_s, u"--all"_s, u"--pid"_s, QString::number(program.id()), u"--class"_s,
                u'^' + entry->string(u"StartupWMClass"_s).value_or(u"none"_s) + u'$'});
        QVERIFY(search.waitForFinished());

        QCOMPARE(search.readAllStandardOutput().count('\n'), 1);
    }

    void theFirstRunRegistersTheLoginItemOnce()
    {
        const auto entry = m_profile->filePath(u"autostart/io.orvella.Orvella.desktop"_s);
        {
            ProgramProcess first(options());
            QTRY_VERIFY_WITH_TIMEOUT(hasStarted(), kPatienceMs);
            QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(first.id()), 1, kPatienceMs);
        }
        QFile file(entry);
        QVERIFY(file.open(QIODevice::ReadOnly));
        const auto text = QString::fromUtf8(file.readAll());
        QVERIFY(text.contains(
            u"\nExec=\"%1\" \"--autostart\" \"--profile\" \"%2\"\n"_s.arg(ProgramProcess::path(), m_profile->path())));
        QVERIFY(file.remove());

        ProgramProcess second(options());
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(second.id()), 1, kPatienceMs);

        QVERIFY(!QFile::exists(entry));
        // The session's own entries are not a profile's business.
        QVERIFY(!QFile::exists(qEnvironmentVariable("XDG_CONFIG_HOME") + u"/autostart"_s));
    }

private:
    /// The settings are written with the first launch.
    [[nodiscard]] bool hasStarted() const { return QFile::exists(m_profile->filePath(u"config/settings.json"_s)); }

    [[nodiscard]] QStringList options() const { return ProgramProcess::optionsFor(*m_profile); }

    std::optional<QTemporaryDir> m_profile;
};

QTEST_GUILESS_MAIN(StartTest)

#include "StartTest.moc"
