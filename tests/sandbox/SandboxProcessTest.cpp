#include "sandbox/support/Exchange.h"

#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>
#include <QUrl>

#include <csignal>
#include <memory>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;

namespace {

QString program()
{
    return qEnvironmentVariable("ORVELLA_SANDBOX_PROGRAM");
}

/// A running program of its own.
class Running final {
public:
    explicit Running(const QStringList& arguments)
    {
        m_process.start(program(), arguments);
        m_address = nextLine();
    }

    [[nodiscard]] const QString& address() const { return m_address; }

    [[nodiscard]] QString nextLine()
    {
        if (!QTest::qWaitFor([this] { return m_process.canReadLine(); }))
            return {};
        return QString::fromUtf8(m_process.readLine()).trimmed();
    }

    [[nodiscard]] HttpAnswer send(const QByteArray& method, const QByteArray& path, const QByteArray& more = {}) const
    {
        const auto port = static_cast<quint16>(QUrl(m_address).port());
        return Exchange(port,
            method + ' ' + path + " HTTP/1.1\r\nhost: 127.0.0.1:" + QByteArray::number(port) + "\r\n"
                + (more.isEmpty() ? "\r\n" : more))
            .answer();
    }

    [[nodiscard]] HttpAnswer post(const QByteArray& path, const QByteArray& body, const QByteArray& token = {}) const
    {
        const auto authorization = token.isEmpty() ? QByteArray() : "authorization: Bearer " + token + "\r\n";
        return send("POST", path,
            authorization + "content-type: application/json\r\ncontent-length: " + QByteArray::number(body.size())
                + "\r\n\r\n" + body);
    }

    [[nodiscard]] Json::Object registerDevice() const
    {
        return post("/api/mac/device/register",
            R"({"deviceName":"desk","appVersion":"0.1.0","anonymousMode":true,"appSignalConsent":false,)"
            R"("autoOpenAds":false,"language":"en"})")
            .data();
    }

    /// Ends it with the signal and answers the exit code, -1 where it did not end by itself.
    [[nodiscard]] int end(int signal)
    {
        kill(static_cast<pid_t>(m_process.processId()), signal);
        if (!m_process.waitForFinished() || m_process.exitStatus() != QProcess::NormalExit)
            return -1;
        return m_process.exitCode();
    }

private:
    QProcess m_process;
    QString m_address;
};

} // namespace

class SandboxProcessTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void initTestCase() { QVERIFY2(QFile::exists(program()), "ORVELLA_SANDBOX_PROGRAM names no program."); }

    void theFirstLineIsTheAddressThatItListensOn()
    {
        const Running sandbox({u"--port"_s, u"0"_s});

        QVERIFY(sandbox.address().startsWith(u"http://127.0.0.1:"_s));
        QCOMPARE(sandbox.send("GET", "/viewer").status, 200);
    }

    void aSignalEndsItCleanly_data()
    {
        QTest::addColumn<int>("signal");

        QTest::newRow("SIGTERM") << SIGTERM;
        QTest::newRow("SIGINT") << SIGINT;
    }

    void aSignalEndsItCleanly()
    {
        QFETCH(int, signal);
        Running sandbox({});
        QVERIFY(!sandbox.address().isEmpty());

        QCOMPARE(sandbox.end(signal), 0);
    }

    void aRegistrationIsToldAtOnce()
    {
        Running sandbox({});

        const auto data = sandbox.registerDevice();

        const auto code = *data.at(u"activationCode"_s).string();
        QCOMPARE(sandbox.nextLine(), u"desk registered; link it at %1/activate?code=%2"_s.arg(sandbox.address(), code));
    }

    void theIntervalsCanBeChosen()
    {
        const Running sandbox({u"--poll-seconds=7"_s, u"--required-seconds=2"_s});

        const auto data = sandbox.registerDevice();
        const auto poll = sandbox.post("/api/mac/ads/available",
            R"({"anonymousMode":true,"appSignalConsent":false,"autoOpenAds":false,"language":"en","categories":[]})",
            data.at(u"deviceToken"_s).string()->toLatin1());

        QVERIFY(data.at(u"pollSeconds"_s) == Json(qint64 {7}));
        QVERIFY(poll.data().at(u"pollSeconds"_s) == Json(qint64 {7}));
        QVERIFY(poll.data().at(u"ad"_s).object()->at(u"requiredSeconds"_s) == Json(qint64 {2}));
    }

    void faultsCanBeChosen()
    {
        const Running sandbox({u"--fault"_s, u"wallet=status:418,click=reset"_s, u"--fault"_s, u"register=garbage"_s});

        QCOMPARE(sandbox.send("GET", "/api/mac/wallet").status, 418);
        QVERIFY(sandbox.post("/api/mac/ads/click", "{}").wasReset);
        QCOMPARE(sandbox.post("/api/mac/device/register", "{}").status, 200);
    }

    void aDatabaseFileOutlivesTheProgramAndHoldsNoToken()
    {
        const QTemporaryDir folder;
        const auto path = folder.filePath(u"sandbox.sqlite"_s);
        Running first({u"--database"_s, path});
        const auto token = first.registerDevice().at(u"deviceToken"_s).string()->toLatin1();
        QCOMPARE(first.end(SIGTERM), 0);

        const Running second({u"--database"_s, path});
        const auto wallet = second.send("GET", "/api/mac/wallet", "authorization: Bearer " + token + "\r\n\r\n");

        QCOMPARE(wallet.status, 200);
        QFile file(path);
        QVERIFY(file.open(QFile::ReadOnly));
        const auto bytes = file.readAll();
        QVERIFY(bytes.contains("desk"));
        QVERIFY(!bytes.contains(token));
    }

    void aCampaignsFileTakesThePlaceOfTheBuiltInOnes()
    {
        const auto path =
            written(R"({"campaigns":[{"id":"mine","advertiserName":"Mine","categories":[],)"
                    R"("requiredSeconds":1,"advertiserChargeCents":1,"viewerEarnCents":0.5,"headline":"H",)"
                    R"("text":"T","creatives":[{"id":"c","language":"en","body":"B","ctaLabel":"C"}]}]})");
        const Running sandbox({u"--campaigns"_s, path});

        QCOMPARE(sandbox.send("GET", "/advertiser/mine").status, 200);
        QCOMPARE(sandbox.send("GET", "/advertiser/northwind-coffee").status, 404);
    }

    void helpAndVersionAnswerAndEnd()
    {
        const auto help = run({u"--help"_s});
        const auto version = run({u"--version"_s});

        QCOMPARE(help.exitCode, 0);
        for (const auto& option :
            {"--port", "--database", "--campaigns", "--poll-seconds", "--required-seconds", "--fault"})
            QVERIFY2(help.output.contains(option), option);
        QVERIFY(help.errors.isEmpty());
        QCOMPARE(version.exitCode, 0);
        QVERIFY(version.output.startsWith("orvella-sandbox "));
    }

    void whatIsWrongOnTheCommandLineIsOneLineAndExit2_data()
    {
        QTest::addColumn<QStringList>("arguments");
        QTest::addColumn<QByteArray>("expected");

        const auto row = [](const char* name, const QStringList& arguments, const QByteArray& expected) {
            QTest::newRow(name) << arguments << "orvella-sandbox: " + expected + "\n";
        };
        row("unknown", {u"--colour"_s}, "Unknown option 'colour'.");
        row("a word", {u"8787"_s}, "\"8787\" is not an option.");
        row("no value", {u"--port"_s}, "Missing value after '--port'.");
        row("no number", {u"--port"_s, u"http"_s}, "--port needs a number from 0 to 65535.");
        row("no port", {u"--port=65536"_s}, "--port needs a number from 0 to 65535.");
        row("negative", {u"--port=-1"_s}, "--port needs a number from 0 to 65535.");
        row("no interval", {u"--poll-seconds=0"_s}, "--poll-seconds needs a number from 1 to 86400.");
        row("a fraction", {u"--required-seconds=1.5"_s}, "--required-seconds needs a number from 0 to 3600.");
        row("no fault", {u"--fault=wallet=slow"_s}, "--fault: there is no fault \"slow\".");
        row("empty file", {u"--database="_s}, "--database needs a file.");
        row("a value for a switch", {u"--help=yes"_s}, "Unexpected value after '--help'.");
    }

    void whatIsWrongOnTheCommandLineIsOneLineAndExit2()
    {
        QFETCH(QStringList, arguments);
        QFETCH(QByteArray, expected);

        const auto ended = run(arguments);

        QCOMPARE(ended.errors, expected);
        QVERIFY(ended.output.isEmpty());
        QCOMPARE(ended.exitCode, 2);
    }

    void aCampaignsFileWithAnErrorIsRefusedAtTheStart()
    {
        const auto path = written(R"({"campaigns":[{"id":"a"}]})");

        const auto ended = run({u"--campaigns"_s, path});
        const auto missing = run({u"--campaigns"_s, path + u".not"_s});

        QCOMPARE(ended.errors, "orvella-sandbox: " + path.toUtf8() + ": campaigns[0].advertiserName is missing\n");
        QVERIFY(ended.output.isEmpty());
        QCOMPARE(ended.exitCode, 2);
        QCOMPARE(missing.errors.count('\n'), 1);
        QCOMPARE(missing.exitCode, 2);
    }

    void whatTheSystemRefusesIsOneLineAndExit1()
    {
        const Running sandbox({});
        const auto port = sandbox.address().section(u':', -1);

        const auto taken = run({u"--port"_s, port});
        const auto noDatabase = run({u"--database"_s, written("This is not a database, it is a long line of text.")});

        QCOMPARE(taken.errors, "orvella-sandbox: Port " + port.toLatin1() + " cannot be listened on.\n");
        QCOMPARE(taken.exitCode, 1);
        QVERIFY(noDatabase.errors.contains("orvella-sandbox: "));
        QVERIFY(noDatabase.output.isEmpty());
        QCOMPARE(noDatabase.exitCode, 1);
    }

private:
    struct Ended {
        int exitCode = -1;
        QByteArray output;
        QByteArray errors;
    };

    static Ended run(const QStringList& arguments)
    {
        QProcess process;
        process.start(program(), arguments);
        if (!process.waitForFinished() || process.exitStatus() != QProcess::NormalExit)
            return {};
        return {process.exitCode(), process.readAllStandardOutput(), process.readAllStandardError()};
    }

    QString written(const QByteArray& text)
    {
        const auto path = m_folder.filePath(u"file%1"_s.arg(++m_files));
        QFile file(path);
        if (!file.open(QFile::WriteOnly) || file.write(text) != text.size())
            qFatal("The file cannot be written.");
        return path;
    }

    QTemporaryDir m_folder;
    int m_files = 0;
};

QTEST_GUILESS_MAIN(SandboxProcessTest)

#include "SandboxProcessTest.moc"
