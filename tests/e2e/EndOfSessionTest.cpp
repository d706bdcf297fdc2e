#include "support/KeyringDaemon.h"
#include "support/PrivateBus.h"
#include "support/ProgramProcess.h"
#include "support/SandboxProcess.h"
#include "support/ScriptedPrompter.h"
#include "support/VisibleWindows.h"

#include "base/ApplicationId.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDBusMessage>
#include <QDBusVirtualObject>
#include <QElapsedTimer>
#include <QFile>
#include <QTcpServer>
#include <QTest>

#include <csignal>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;
/// A second, and what a busy machine adds to it.
constexpr int kLimitMs = 1'500;

/// Takes connections and says nothing.
class SilentServer final {
public:
    SilentServer()
    {
        if (!m_server.listen(QHostAddress::LocalHost))
            qFatal("There is no free port.");
    }

    [[nodiscard]] quint16 port() const { return m_server.serverPort(); }

    [[nodiscard]] bool hasBeenCalled() const { return m_server.hasPendingConnections(); }

private:
    QTcpServer m_server;
};

/// A display besides the test's own, with nothing on it.
class DisplayProcess final {
public:
    DisplayProcess()
    {
        m_server.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_server.start(u"Xvfb"_s,
            {u"-displayfd"_s, u"1"_s, u"-screen"_s, u"0"_s, u"800x600x24"_s, u"-nolisten"_s, u"tcp"_s, u"-noreset"_s});
        if (!m_server.waitForReadyRead())
            qFatal("The display does not start.");
        m_name = u':' + QString::fromUtf8(m_server.readLine().trimmed());
    }

    ~DisplayProcess() { end(); }

    [[nodiscard]] const QString& name() const { return m_name; }

    void end()
    {
        m_server.terminate();
        m_server.waitForFinished();
    }

    void kill()
    {
        m_server.kill();
        m_server.waitForFinished();
    }

private:
    QProcess m_server;
    QString m_name;
};

/// Has the program's name, and never answers.
class SilentOwner final : public QDBusVirtualObject {
public:
    SilentOwner()
    {
        auto bus = QDBusConnection::sessionBus();
        if (!bus.registerVirtualObject(u"/"_s, this, QDBusConnection::SubPath) || !bus.registerService(kApplicationId))
            qFatal("The name is taken.");
    }

    ~SilentOwner() override
    {
        QDBusConnection::sessionBus().unregisterService(kApplicationId);
        QDBusConnection::sessionBus().unregisterObject(u"/"_s);
    }

    bool handleMessage(const QDBusMessage&, const QDBusConnection&) override
    {
        ++calls;
        return true;
    }

    [[nodiscard]] QString introspect(const QString&) const override { return {}; }

    int calls = 0;
};

void endsInOrder(ProgramProcess& program, int signal = SIGTERM)
{
    QVERIFY(program.isRunning());
    QElapsedTimer timer;
    timer.start();

    program.send(signal);

    QCOMPARE(program.exitCode(), 0);
    QVERIFY2(timer.elapsed() < kLimitMs, qPrintable(QString::number(timer.elapsed())));
}

} // namespace

/// The real program, ended by its session in whatever it is doing.
class EndOfSessionTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_profile.emplace(); }

    void eachSignalEndsTheProgramInOrder_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void eachSignalEndsTheProgramInOrder()
    {
        QFETCH(const int, signal);
        ProgramProcess program(options());
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);

        endsInOrder(program, signal);
    }

    void aFewSignalsAtOnceAreOne()
    {
        ProgramProcess program(options());
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);

        program.send(SIGHUP);
        program.send(SIGTERM);
        endsInOrder(program);
    }

    void aRequestThatHangsHoldsNothingUp()
    {
        const SilentServer service;
        ProgramProcess program(optionsFor(u"http://127.0.0.1:%1"_s.arg(service.port())));
        QTRY_VERIFY_WITH_TIMEOUT(service.hasBeenCalled(), kPatienceMs);

        endsInOrder(program);
    }

    void aPromptOfTheKeyringHoldsNothingUp()
    {
        KeyringDaemon keyring;
        QVERIFY(keyring.start());
        QVERIFY(keyring.lock());
        const ScriptedPrompter prompter;
        ProgramProcess program({u"--set"_s, u"apiBaseURL=http://127.0.0.1:9"_s});
        QTRY_COMPARE_WITH_TIMEOUT(prompter.up(), 1, kPatienceMs);

        endsInOrder(program);
    }

    void theOpenMenuHoldsNothingUp()
    {
        ProgramProcess program(options());
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);
        ProgramProcess launcher(options() + QStringList {u"--open-ad"_s});
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);

        endsInOrder(program);
        QCOMPARE(launcher.exitCode(), 0);
    }

    void anAdHoldsNothingUp()
    {
        SandboxProcess service;
        ProgramProcess program(optionsFor(service.address()) + QStringList {u"--set"_s, u"autoOpenAds=true"_s});
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);

        endsInOrder(program);
    }

    void aDisplayThatDoesNotAnswerHoldsNothingUp()
    {
        constexpr quint16 kFirstDisplayPort = 6000;
        const SilentServer display;
        ProgramProcess program(options(), {{u"DISPLAY"_s, u"127.0.0.1:%1"_s.arg(display.port() - kFirstDisplayPort)}});
        QTRY_VERIFY_WITH_TIMEOUT(display.hasBeenCalled(), kPatienceMs);

        endsInOrder(program);
    }

    void aBusThatDoesNotAnswerHoldsNothingUp()
    {
        const SilentServer bus;
        ProgramProcess program(
            options(), {{u"DBUS_SESSION_BUS_ADDRESS"_s, u"tcp:host=127.0.0.1,port=%1"_s.arg(bus.port())}});
        QTRY_VERIFY_WITH_TIMEOUT(bus.hasBeenCalled(), kPatienceMs);

        endsInOrder(program);
    }

    void aFirstProgramThatDoesNotAnswerHoldsNothingUp()
    {
        const SilentOwner first;
        ProgramProcess program({u"--set"_s, u"apiBaseURL=http://127.0.0.1:9"_s});
        QTRY_COMPARE_WITH_TIMEOUT(first.calls, 1, kPatienceMs);

        endsInOrder(program);
    }

    void theProgramEndsInOrderWithItsDisplay()
    {
        DisplayProcess display;
        ProgramProcess program(options(), {{u"DISPLAY"_s, display.name()}});
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id(), display.name()), 1, kPatienceMs);
        QElapsedTimer timer;
        timer.start();

        display.end();

        QCOMPARE(program.exitCode(), 0);
        QVERIFY2(timer.elapsed() < kLimitMs, qPrintable(QString::number(timer.elapsed())));
    }

    void theEndOfTheDisplayLosesNothing_data()
    {
        QTest::addColumn<bool>("isKilled");
        QTest::newRow("ended") << false;
        QTest::newRow("killed") << true;
    }

    void theEndOfTheDisplayLosesNothing()
    {
        QFETCH(const bool, isKilled);
        SandboxProcess service;
        {
            DisplayProcess display;
            ProgramProcess program(optionsFor(service.address()), {{u"DISPLAY"_s, display.name()}});
            QTRY_COMPARE_WITH_TIMEOUT(service.lines().size(), 1, kPatienceMs);
            QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id(), display.name()), 1, kPatienceMs);
            // The first of the settings has the keyboard: ads open by themselves from now on.
            QCOMPARE(pressSpaceOn(display), 0);
            QTRY_VERIFY_WITH_TIMEOUT(settings().contains("autoOpenAds"), kPatienceMs);

            isKilled ? display.kill() : display.end();

            QCOMPARE(program.exitCode(), 0);
        }

        ProgramProcess next(optionsFor(service.address()));
        // The ad has opened beside the startup window.
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(next.id()), 2, kPatienceMs);
        QCOMPARE(service.lines().size(), 1);
    }

    void withoutItsBusTheProgramStillEndsInOrder()
    {
        PrivateBus bus;
        ProgramProcess program(options(), {{u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address()}});
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);

        bus.kill();
        QTest::qWait(200);

        if (program.isRunning())
            program.send(SIGTERM);
        QCOMPARE(program.exitCode(), 0);
    }

private:
    [[nodiscard]] QStringList options() const { return ProgramProcess::optionsFor(*m_profile); }

    [[nodiscard]] QStringList optionsFor(const QString& service) const
    {
        return {u"--profile"_s, m_profile->path(), u"--set"_s, u"apiBaseURL="_s + service};
    }

    [[nodiscard]] QByteArray settings() const
    {
        QFile file(m_profile->filePath(u"config/settings.json"_s));
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    static int pressSpaceOn(const DisplayProcess& display)
    {
        return QProcess::execute(u"env"_s,
            {u"DISPLAY="_s + display.name(), u"xdotool"_s, u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Orvella$"_s,
                u"windowfocus"_s, u"--sync"_s, u"key"_s, u"space"_s});
    }

    std::optional<QTemporaryDir> m_profile;
};

QTEST_GUILESS_MAIN(EndOfSessionTest)

#include "EndOfSessionTest.moc"
