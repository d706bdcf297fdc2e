#include "support/ProgramProcess.h"
#include "support/SandboxProcess.h"
#include "support/VisibleWindows.h"

#include <QDir>
#include <QTest>

#include <algorithm>
#include <csignal>
#include <memory>
#include <vector>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 30'000;
/// Within which a second program would have registered, too.
constexpr int kPauseMs = 500;

using Programs = std::vector<std::unique_ptr<ProgramProcess>>;

} // namespace

/// The real program, started by a viewer who is impatient.
class ManyStartsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void ofManyStartsAtOnceOneLives_data()
    {
        const QStringList nothing {QString()};
        const QStringList all {QString(), u"--open-ad"_s, u"--settings"_s, u"--autostart"_s};
        QTest::addColumn<int>("starts");
        QTest::addColumn<QStringList>("requests");
        QTest::addColumn<bool>("hasProfile");
        QTest::addColumn<bool>("hasBus");
        QTest::newRow("twenty, for all that there is, in a profile") << 20 << all << true << true;
        QTest::newRow("some, for nothing else") << 6 << nothing << false << true;
        QTest::newRow("twenty, without a bus") << 20 << all << false << false;
    }

    void ofManyStartsAtOnceOneLives()
    {
        QFETCH(const int, starts);
        QFETCH(const QStringList, requests);
        QFETCH(const bool, hasProfile);
        QFETCH(const bool, hasBus);
        const QTemporaryDir folder;
        SandboxProcess service;
        QStringList options {u"--set"_s, u"apiBaseURL="_s + service.address()};
        if (hasProfile)
            options += {u"--profile"_s, folder.path()};
        ProgramProcess::Variables variables {
            {u"XDG_STATE_HOME"_s, folder.path()}, {u"XDG_CONFIG_HOME"_s, folder.path()}};
        if (!hasBus)
            variables.insert({u"DBUS_SESSION_BUS_ADDRESS"_s, u"unix:path=/nonexistent/bus"_s});

        Programs programs;
        for (int start = 0; start < starts; ++start) {
            const auto request = requests.at(start % requests.size());
            programs.push_back(std::make_unique<ProgramProcess>(
                request.isEmpty() ? options : options + QStringList {request}, variables));
        }

        QTRY_COMPARE_WITH_TIMEOUT(std::ranges::count_if(programs, &isRunning), 1, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(registrations(service), 1, kPatienceMs);
        QTest::qWait(kPauseMs);
        QCOMPARE(registrations(service), 1);
        QCOMPARE(std::ranges::count_if(programs, &isRunning), 1);
        for (const auto& program : programs) {
            if (isRunning(program)) {
                QTRY_VERIFY_WITH_TIMEOUT(visibleWindowsOf(program->id()) >= 1, kPatienceMs);
                program->send(SIGTERM);
            }
            QCOMPARE(program->exitCode(), 0);
            QCOMPARE(program->errors(), QString());
        }
    }

private:
    [[nodiscard]] static bool isRunning(const std::unique_ptr<ProgramProcess>& program) { return program->isRunning(); }

    [[nodiscard]] static qsizetype registrations(SandboxProcess& service)
    {
        return service.lines().filter(u" registered; "_s).size();
    }
};

QTEST_GUILESS_MAIN(ManyStartsTest)

#include "ManyStartsTest.moc"
