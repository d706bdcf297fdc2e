#include "base/TerminationSignals.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <cstdio>
#include <unistd.h>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

/// More than a pipe holds.
constexpr int kFlood = 70'000;

void ownHandler(int) {}

[[noreturn]] void sayAndHang()
{
    std::puts("waiting");
    std::fflush(stdout);
    for (;;)
        pause();
}

/// The program that the tests start: it waits to be ended and says how it was.
int waitForASignal(QCoreApplication& application)
{
    const auto mode = application.arguments().constLast();
    if (mode == u"ignoring"_s)
        std::signal(SIGHUP, SIG_IGN);
    if (mode == u"starting"_s || mode == u"ignoring"_s)
        TerminationSignals::endAtOnce();
    if (mode == u"starting"_s)
        sayAndHang();
    const TerminationSignals signalsOfTheSystem;
    if (mode == u"early"_s)
        std::raise(SIGTERM);
    if (mode == u"flooded"_s)
        for (int count = 0; count < kFlood; ++count)
            std::raise(SIGTERM);
    if (mode == u"busy"_s)
        sayAndHang();
    std::puts("waiting");
    std::fflush(stdout);
    const int code = QCoreApplication::exec();
    std::puts("left the main loop");
    std::fflush(stdout);
    if (mode == u"clinging"_s)
        sayAndHang();
    return code;
}

class Child final {
public:
    explicit Child(const QString& mode)
    {
        m_process.start(QCoreApplication::applicationFilePath(), {u"--child"_s, mode});
        while (!isWaiting() && m_process.waitForReadyRead(10'000))
            m_output += m_process.readAllStandardOutput();
    }

    [[nodiscard]] bool isWaiting() const { return m_output.contains("waiting"); }

    void send(int signal) { ::kill(static_cast<pid_t>(m_process.processId()), signal); }

    [[nodiscard]] bool isRunningAfter(int milliseconds) { return !m_process.waitForFinished(milliseconds); }

    [[nodiscard]] bool endsWithCodeZero()
    {
        if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(10'000))
            return false;
        m_output += m_process.readAllStandardOutput();
        return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0;
    }

    /// Whether it came out of its main loop and returned 0.
    [[nodiscard]] bool endsOrderly() { return endsWithCodeZero() && hasLeftTheMainLoop(); }

    [[nodiscard]] bool hasLeftTheMainLoop() const { return m_output.contains("left the main loop"); }

private:
    QProcess m_process;
    QByteArray m_output;
};

} // namespace

class TerminationSignalsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void eachSignalEndsTheMainLoopWithExitCodeZero_data()
    {
        QTest::addColumn<int>("signal");
        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
        QTest::newRow("SIGHUP") << SIGHUP;
    }

    void eachSignalEndsTheMainLoopWithExitCodeZero()
    {
        QFETCH(const int, signal);
        Child child(u"plain"_s);
        QVERIFY(child.isWaiting());

        child.send(signal);

        QVERIFY(child.endsOrderly());
    }

    void anotherSignalIsNotCaught()
    {
        Child child(u"plain"_s);
        QVERIFY(child.isWaiting());

        child.send(SIGUSR1);

        QVERIFY(!child.endsOrderly());
    }

    void aSignalBeforeTheMainLoopEndsItOnceItRuns()
    {
        Child child(u"early"_s);

        QVERIFY(child.endsOrderly());
    }

    void aFloodOfSignalsDoesNotHoldTheProgramUp()
    {
        Child child(u"flooded"_s);

        QVERIFY(child.endsOrderly());
    }

    void aSignalThatWasIgnoredStaysIgnored()
    {
        Child child(u"ignoring"_s);
        QVERIFY(child.isWaiting());

        child.send(SIGHUP);
        QVERIFY(child.isRunningAfter(200));

        child.send(SIGTERM);
        QVERIFY(child.endsOrderly());
    }

    void beforeThereIsAMainLoopASignalEndsTheProgramAtOnce()
    {
        Child child(u"starting"_s);
        QVERIFY(child.isWaiting());

        child.send(SIGTERM);

        QVERIFY(child.endsWithCodeZero());
        QVERIFY(!child.hasLeftTheMainLoop());
    }

    void aProgramThatHangsEndsASecondAfterTheSignal_data()
    {
        QTest::addColumn<QString>("mode");
        QTest::newRow("in the main loop") << u"busy"_s;
        QTest::newRow("after it") << u"clinging"_s;
    }

    void aProgramThatHangsEndsASecondAfterTheSignal()
    {
        QFETCH(const QString, mode);
        Child child(mode);
        QVERIFY(child.isWaiting());
        QElapsedTimer timer;
        timer.start();

        child.send(SIGTERM);

        QVERIFY(child.endsWithCodeZero());
        QVERIFY(timer.elapsed() >= 900);
        QVERIFY(timer.elapsed() < 5000);
    }

    void aSecondSignalDoesNotPutTheEndOff()
    {
        Child child(u"busy"_s);
        QVERIFY(child.isWaiting());
        QElapsedTimer timer;
        timer.start();

        child.send(SIGHUP);
        QVERIFY(child.isRunningAfter(800));
        child.send(SIGTERM);

        QVERIFY(child.endsWithCodeZero());
        QVERIFY2(timer.elapsed() < 1600, QByteArray::number(timer.elapsed()));
    }

    void theFormerHandlersComeBack()
    {
        auto* const atStart = std::signal(SIGTERM, ownHandler);
        struct sigaction during = {};
        struct sigaction afterwards = {};

        {
            const TerminationSignals signalsOfTheSystem;
            sigaction(SIGTERM, nullptr, &during);
        }
        sigaction(SIGTERM, nullptr, &afterwards);
        std::signal(SIGTERM, atStart);

        QVERIFY(during.sa_handler != ownHandler);
        QVERIFY(afterwards.sa_handler == ownHandler);
    }

    void asManyCanBeMadeOneAfterTheOtherAsOneLikes()
    {
        // More than the file descriptors that a process may have by default.
        for (int count = 0; count < 2000; ++count)
            const TerminationSignals signalsOfTheSystem;

        const TerminationSignals last;
        std::raise(SIGTERM);
        QCOMPARE(QCoreApplication::exec(), 0);
        // The program goes on here.
        alarm(0);
    }
};

int main(int argc, char** argv)
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(u"--child"_s))
        return waitForASignal(application);
    TerminationSignalsTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "TerminationSignalsTest.moc"
