#include "support/KeyringDaemon.h"
#include "support/ProgramProcess.h"
#include "support/SandboxProcess.h"

#include <QFile>
#include <QTest>

#include <csignal>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;
/// How much later than the program the keyring is started.
constexpr int kLateMs = 3'000;

} // namespace

/// The real program, the service and a real keyring that is started after the program.
class LateKeyringTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aKeyringThatComesAfterTheProgramMakesNoSecondDevice()
    {
        SandboxProcess service({u"--required-seconds"_s, u"1"_s});
        const QStringList options {u"--set"_s, u"apiBaseURL="_s + service.address()};
        KeyringDaemon keyring;
        QVERIFY(keyring.start());
        {
            ProgramProcess first(options);
            QTRY_VERIFY_WITH_TIMEOUT(isTokenKept(), kPatienceMs);
            first.send(SIGTERM);
            QCOMPARE(first.exitCode(), 0);
        }
        QTRY_COMPARE_WITH_TIMEOUT(registrations(service), 1, kPatienceMs);
        keyring.kill();

        ProgramProcess second(options + QStringList {u"--set"_s, u"autoOpenAds=true"_s});
        QTest::qWait(kLateMs);
        QVERIFY(second.isRunning());
        QCOMPARE(service.lines().size(), 1);
        QVERIFY(keyring.start());

        // The one device that there is watches an ad.
        QTRY_COMPARE_WITH_TIMEOUT(service.lines().filter(u" earned "_s).size(), 1, kPatienceMs);
        QCOMPARE(registrations(service), 1);
        second.send(SIGTERM);
        QCOMPARE(second.exitCode(), 0);
    }

private:
    [[nodiscard]] static bool isTokenKept()
    {
        return !KeyringDaemon::secretTool(
                   {u"lookup"_s, u"service"_s, u"orvella.device-token"_s, u"account"_s, u"default"_s})
                    .isEmpty()
            && QFile::exists(
                qEnvironmentVariable("XDG_STATE_HOME") + u"/orvella/orvella.device-token-default.in-keyring"_s);
    }

    [[nodiscard]] static qsizetype registrations(SandboxProcess& service)
    {
        return service.lines().filter(u" registered; "_s).size();
    }
};

QTEST_GUILESS_MAIN(LateKeyringTest)

#include "LateKeyringTest.moc"
