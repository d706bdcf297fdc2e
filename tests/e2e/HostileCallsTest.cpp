#include "support/FakeStatusArea.h"
#include "support/HostileCall.h"
#include "support/ProcessFacts.h"
#include "support/ProgramProcess.h"
#include "support/RecordingProxy.h"
#include "support/SandboxProcess.h"
#include "support/VirtualDesktop.h"
#include "support/VisibleWindows.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCall>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <csignal>
#include <map>
#include <optional>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 30'000;
/// Within which a window or a request would have come that is not wanted.
constexpr int kPauseMs = 100;
/// In which nothing more happens after a start.
constexpr int kQuietMs = 1'500;
/// A second, and what a busy machine adds to it.
constexpr int kLimitMs = 1'500;

const auto kName = u"io.orvella.Orvella"_s;
const auto kPath = u"/io/orvella/Orvella"_s;
const auto kItemPath = u"/StatusNotifierItem"_s;
const auto kItem = u"org.kde.StatusNotifierItem"_s;
const auto kProperties = u"org.freedesktop.DBus.Properties"_s;
const auto kPeer = u"org.freedesktop.DBus.Peer"_s;

void addRows(const QList<HostileCall>& calls)
{
    QTest::addColumn<HostileCall>("call");
    for (const auto& call : calls)
        QTest::newRow(call.name.constData()) << call;
}

} // namespace

/// The real program, and another one on the session bus that calls whatever it has there.
class HostileCallsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_area.start());
        // Freed memory is given back soon, so that what is kept can be told from it.
        m_program.emplace(QStringList {u"--set"_s, u"apiBaseURL="_s + m_proxy.address(), u"--set"_s,
                              u"showLaunchWindowAtStartup=false"_s},
            ProgramProcess::Variables {{u"XDG_CONFIG_HOME"_s, m_home.path()}, {u"XDG_STATE_HOME"_s, m_home.path()},
                {u"ASAN_OPTIONS"_s, qEnvironmentVariable("ASAN_OPTIONS") + u":quarantine_size_mb=1"_s}});
        QTRY_VERIFY_WITH_TIMEOUT(!m_area.items().isEmpty() && QFile::exists(settingsPath()), kPatienceMs);
        // What it asks the service after its start is over then.
        QTRY_VERIFY_WITH_TIMEOUT(!m_proxy.requests().empty(), kPatienceMs);
        std::size_t requests = 0;
        do {
            requests = m_proxy.requests().size();
            QTest::qWait(kQuietMs);
        } while (m_proxy.requests().size() != requests);
        m_requests = requests;
        m_settings = settings();
        QVERIFY(!m_settings.isEmpty());
    }

    void cleanupTestCase()
    {
        m_program->send(SIGTERM);
        QCOMPARE(m_program->exitCode(), 0);
        QCOMPARE(m_program->errors(), QString());
        QDBusConnection::disconnectFromBus(u"hostile"_s);
    }

    /// So that a window that should not be there fails one row only.
    void cleanup() { QTRY_COMPARE_WITH_TIMEOUT(windowsAfterEscape(), 0, kPatienceMs); }

    void aWrongCallIsRefused_data() { addRows(HostileCall::wrong()); }

    void aWrongCallIsRefused()
    {
        QFETCH(const HostileCall, call);

        const auto answer = ask(call);

        QCOMPARE(answer.errorName(), call.error);
        isAsBefore();
    }

    void anIdleCallHasNoEffect_data() { addRows(HostileCall::idle()); }

    void anIdleCallHasNoEffect()
    {
        QFETCH(const HostileCall, call);

        const auto answer = ask(call);

        QCOMPARE(answer.errorMessage(), QString());
        QVERIFY(!QDebug::toString(answer).contains(u"objectName"_s));
        isAsBefore();
    }

    void manyCallsLeaveNothingBehind()
    {
        constexpr int kFirst = 2'000;
        constexpr int kMany = 2'000;
        // A little is always kept, for what comes next.
        constexpr qint64 kGrowthKib = 16 * 1024;
        askMany(kFirst);
        const auto memoryBefore = memoryKib();
        const auto descriptorsBefore = descriptors();

        askMany(kMany);

        QTRY_VERIFY_WITH_TIMEOUT(descriptors() <= descriptorsBefore, kPatienceMs);
        qInfo("%lld KiB before, %lld KiB after", memoryBefore, memoryKib());
        QTRY_VERIFY_WITH_TIMEOUT(memoryKib() - memoryBefore < kGrowthKib, kPatienceMs);
        isAsBefore();
    }

    void whateverComesWithItACallDoesWhatItIsFor_data() { addRows(HostileCall::effective()); }

    void whateverComesWithItACallDoesWhatItIsFor()
    {
        QFETCH(const HostileCall, call);

        const auto answer = ask(call);

        QCOMPARE(answer.errorMessage(), QString());
        QTRY_COMPARE_WITH_TIMEOUT(windows(), 1, kPatienceMs);
        QVERIFY(isOnScreen());
        QCOMPARE(settings(), m_settings);
        QCOMPARE(m_program->errors(), QString());
        answersSoon();
    }

private:
    [[nodiscard]] QString settingsPath() const { return m_home.filePath(u"orvella/settings.json"_s); }

    [[nodiscard]] QByteArray settings() const
    {
        QFile file(settingsPath());
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    }

    [[nodiscard]] int windows() const { return visibleWindowsOf(m_program->id()); }

    [[nodiscard]] int windowsAfterEscape() const
    {
        const auto there = windows();
        if (there > 0)
            static_cast<void>(VirtualDesktop::run(u"xdotool"_s, {u"key"_s, u"Escape"_s}));
        return there;
    }

    [[nodiscard]] QDBusPendingCall send(const HostileCall& call)
    {
        const auto service = call.path.startsWith(kItemPath) ? m_area.items().constFirst() : kName;
        auto message = QDBusMessage::createMethodCall(service, call.path, call.interface, call.member);
        message.setArguments(call.arguments);
        return m_bus.asyncCall(message, kPatienceMs);
    }

    [[nodiscard]] QDBusMessage ask(const HostileCall& call)
    {
        auto pending = send(call);
        pending.waitForFinished();
        return pending.reply();
    }

    void askMany(int count)
    {
        // As many as the bus lets wait for their answers.
        constexpr qsizetype kAtOnce = 100;
        auto calls = HostileCall::wrong();
        calls.append(HostileCall::idle());
        QList<QDBusPendingCall> pending;
        for (int number = 0; number < count; ++number) {
            pending.append(send(calls.at(number % calls.size())));
            if (pending.size() == kAtOnce || number + 1 == count) {
                for (auto& call : pending)
                    call.waitForFinished();
                pending.clear();
            }
        }
    }

    void isAsBefore()
    {
        answersSoon();
        QTest::qWait(kPauseMs);
        QCOMPARE(windows(), 0);
        QCOMPARE(settings(), m_settings);
        QCOMPARE(m_proxy.requests().size(), m_requests);
        QCOMPARE(m_program->errors(), QString());
        QVERIFY(m_program->isRunning());
    }

    void answersSoon()
    {
        QElapsedTimer timer;
        timer.start();
        const auto title = ask({{}, kItemPath, kProperties, u"Get"_s, {kItem, u"Title"_s}});
        QCOMPARE(title.errorMessage(), QString());
        QCOMPARE(ask({{}, kPath, kPeer, u"Ping"_s, {}}).errorMessage(), QString());
        QVERIFY2(timer.elapsed() < kLimitMs, qPrintable(QString::number(timer.elapsed())));
    }

    /// Whether all of the program's window is on the display.
    [[nodiscard]] bool isOnScreen() const
    {
        QProcess search;
        search.start(u"xdotool"_s,
            {u"search"_s, u"--onlyvisible"_s, u"--all"_s, u"--pid"_s, QString::number(m_program->id()), u"--name"_s,
                u""_s, u"getwindowgeometry"_s, u"--shell"_s});
        search.waitForFinished();
        std::map<QByteArray, int> facts;
        for (const auto& line : search.readAllStandardOutput().split('\n'))
            facts[line.left(line.indexOf('='))] = line.sliced(line.indexOf('=') + 1).toInt();
        const QRect window(facts["X"], facts["Y"], facts["WIDTH"], facts["HEIGHT"]);
        return !window.isEmpty() && QRect(0, 0, 1280, 720).contains(window);
    }

    [[nodiscard]] qint64 memoryKib() const
    {
        const auto status = ProcessFacts::file(m_program->id(), u"status"_s);
        const QByteArray name = "VmRSS:";
        return status.sliced(status.indexOf(name) + name.size()).trimmed().split(' ').constFirst().toLongLong();
    }

    [[nodiscard]] qsizetype descriptors() const
    {
        return QDir(u"/proc/%1/fd"_s.arg(m_program->id())).entryList(QDir::AllEntries | QDir::System).size();
    }

    const QTemporaryDir m_home;
    SandboxProcess m_service {{u"--poll-seconds"_s, u"900"_s}};
    RecordingProxy m_proxy {m_service.address()};
    FakeStatusArea m_area;
    QDBusConnection m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"hostile"_s);
    std::optional<ProgramProcess> m_program;
    std::size_t m_requests = 0;
    QByteArray m_settings;
};

QTEST_GUILESS_MAIN(HostileCallsTest)

#include "HostileCallsTest.moc"
