#include "base/TerminationSignals.h"

#include <QCoreApplication>
#include <QProcess>
#include <QTest>

#include <csignal>
#include <cstdio>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

/// More than a pipe holds.
constexpr int kFlood = 70'000;

void ownHandler(int) {}

/// The program that the tests start: it waits to be ended and says how it was.
int waitForASignal(QCoreApplication& application)
{
    const auto mode = application.arguments().constLast();
    if (mode == u"ignoring"_s)
        std::signal(SIGHUP, SIG_IGN);
    const TerminationSignals signalsOfTheSystem;
    if (mode == u"early"_s)
        std::raise(SIGTERM);
    if (mode == u"flooded"_s)
        for (int count = 0; count < kFlood; ++count)
            std::raise(SIGTERM);
    std::puts("waiting");
    std::fflush(stdout);
    const int code = QCoreApplication::exec();
    std::puts("left the main loop");
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

    /// Whether it came out of its main loop and returned 0.
    [[nodiscard]] bool endsOrderly()
    {
        if (m_process.state() != QProcess::NotRunning && !m_process.waitForFinished(10'000))
            return false;
        m_output += m_process.readAllStandardOutput();
        return m_process.exitStatus() == QProcess::NormalExit && m_process.exitCode() == 0
            && m_output.contains("left the main loop");
    }

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
