#include "support/PrivateBus.h"
#include "support/ProcessFacts.h"
#include "support/ProgramProcess.h"
#include "support/SandboxProcess.h"
#include "support/VirtualDesktop.h"
#include "support/VisibleWindows.h"

#include <QElapsedTimer>
#include <QFile>
#include <QTest>

#include <csignal>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 30'000;
/// Until what is under way when the bus goes has come to its end.
constexpr int kSettleMs = 1'000;
constexpr int kRestMs = 3'000;
/// Of kRestMs, on a busy machine; a busy loop takes nearly all of it.
constexpr auto kMostAtRest = 300ms;
/// For what a viewer does to a window; a blocked main thread holds it up for longer.
constexpr int kPromptMs = 5'000;

/// Presses keys in the startup window.
bool press(const QStringList& keys)
{
    return VirtualDesktop::run(u"xdotool"_s,
               {u"search"_s, u"--onlyvisible"_s, u"--name"_s, u"^Orvella$"_s, u"windowactivate"_s, u"--sync"_s})
        && VirtualDesktop::run(u"xdotool"_s, QStringList {u"key"_s} + keys);
}

/// A real keyring on a bus of its own.
class KeyringOnBus final {
public:
    explicit KeyringOnBus(const PrivateBus& bus)
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address());
        m_process.setProcessEnvironment(environment);
        m_process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        m_process.start(u"gnome-keyring-daemon"_s, {u"--unlock"_s, u"--foreground"_s, u"--components=secrets"_s});
        m_process.write("open sesame");
        m_process.closeWriteChannel();
        if (!m_process.waitForStarted())
            qFatal("The keyring does not start.");
    }

    ~KeyringOnBus()
    {
        m_process.kill();
        m_process.waitForFinished();
    }

private:
    QProcess m_process;
};

} // namespace

/// The real program whose session bus goes away, or hangs, while it runs.
class LostBusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_profile.emplace();
        m_service.emplace(QStringList {u"--required-seconds"_s, u"5"_s});
    }

    void theProgramGoesOnWithoutItsBusQuietlyAndAtRest()
    {
        PrivateBus bus;
        ProgramProcess program(options(), variables(bus));
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);
        QVERIFY(m_service->activate(m_service->activationCode()).contains(u"is linked"_s));
        QVERIFY(m_service->page(u"/viewer"_s).contains(u"Ads open by themselves"_s));
        QCOMPARE(paid(), 0);

        bus.kill();

        // The ad that is open counts on and is paid.
        QTRY_COMPARE_WITH_TIMEOUT(paid(), 1, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);
        // The first of the settings has the keyboard; it reaches the service.
        QVERIFY(press({u"space"_s}));
        QTRY_VERIFY_WITH_TIMEOUT(m_service->page(u"/viewer"_s).contains(u"Ads open by hand"_s), kPatienceMs);
        restsAndEnds(program);
    }

    void theTokenOfTheKeyringServesOnWithoutTheBus()
    {
        PrivateBus bus;
        const KeyringOnBus keyring(bus);
        ProgramProcess program(
            {u"--set"_s, u"apiBaseURL="_s + m_service->address(), u"--set"_s, u"autoOpenAds=true"_s}, variables(bus));
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);
        QVERIFY(QFile::exists(
            qEnvironmentVariable("XDG_STATE_HOME") + u"/orvella/orvella.device-token-default.in-keyring"_s));

        bus.kill();

        QTRY_COMPARE_WITH_TIMEOUT(paid(), 1, kPatienceMs);
        restsAndEnds(program);
    }

    void aBusThatHangsHoldsNoWindowUp()
    {
        PrivateBus bus;
        ProgramProcess program(options(), variables(bus));
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);

        bus.suspend();

        QTRY_COMPARE_WITH_TIMEOUT(paid(), 1, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);
        QElapsedTimer timer;
        timer.start();
        QVERIFY(press({u"Return"_s}));
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 0, kPatienceMs);
        QVERIFY2(timer.elapsed() < kPromptMs, qPrintable(QString::number(timer.elapsed())));

        // What came in meanwhile is done when the bus is back.
        bus.resume();
        ProgramProcess second(options() + QStringList {u"--settings"_s}, variables(bus));
        QCOMPARE(second.exitCode(), 0);
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 1, kPatienceMs);
        restsAndEnds(program);
    }

    void theProgramEndsInOrderWhileItsBusHangs()
    {
        PrivateBus bus;
        ProgramProcess program(options(), variables(bus));
        QTRY_COMPARE_WITH_TIMEOUT(visibleWindowsOf(program.id()), 2, kPatienceMs);

        bus.suspend();

        ends(program);
    }

private:
    /// Ads open by themselves, and take so long that the bus goes before they are paid.
    [[nodiscard]] QStringList options() const
    {
        return {u"--profile"_s, m_profile->path(), u"--set"_s, u"apiBaseURL="_s + m_service->address(), u"--set"_s,
            u"autoOpenAds=true"_s};
    }

    [[nodiscard]] static ProgramProcess::Variables variables(const PrivateBus& bus)
    {
        return {{u"DBUS_SESSION_BUS_ADDRESS"_s, bus.address()}};
    }

    [[nodiscard]] qsizetype paid() { return m_service->lines().filter(u" earned "_s).size(); }

    static void restsAndEnds(ProgramProcess& program)
    {
        QTest::qWait(kSettleMs);
        const auto before = ProcessFacts::processorTime(program.id());
        QVERIFY(before > 0ms);
        QTest::qWait(kRestMs);
        QVERIFY(program.isRunning());
        const auto used = ProcessFacts::processorTime(program.id()) - before;
        QVERIFY2(used < kMostAtRest, qPrintable(QString::number(used.count())));
        ends(program);
    }

    static void ends(ProgramProcess& program)
    {
        constexpr int kLimitMs = 1'500;
        QElapsedTimer timer;
        timer.start();
        program.send(SIGTERM);
        QCOMPARE(program.exitCode(), 0);
        QVERIFY2(timer.elapsed() < kLimitMs, qPrintable(QString::number(timer.elapsed())));
        QCOMPARE(program.errors(), QString());
    }

    std::optional<QTemporaryDir> m_profile;
    std::optional<SandboxProcess> m_service;
};

QTEST_GUILESS_MAIN(LostBusTest)

#include "LostBusTest.moc"
