#include <QMap>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 30'000;

/// What the program did with these arguments, without a display and without a bus.
struct Outcome {
    int exitCode = -1;
    QString output;
    QString errors;

    explicit Outcome(const QStringList& arguments, const QMap<QString, QString>& variables = {})
    {
        auto environment = QProcessEnvironment::systemEnvironment();
        for (const auto* const name : {"DISPLAY", "WAYLAND_DISPLAY", "DBUS_SESSION_BUS_ADDRESS", "QT_QPA_PLATFORM"})
            environment.remove(QString::fromLatin1(name));
        for (auto variable = variables.begin(); variable != variables.end(); ++variable)
            environment.insert(variable.key(), variable.value());
        QProcess process;
        process.setProcessEnvironment(environment);
        process.start(QStringLiteral(ORVELLA_PROGRAM), arguments);
        if (process.waitForFinished(kPatienceMs) && process.exitStatus() == QProcess::NormalExit)
            exitCode = process.exitCode();
        output = QString::fromUtf8(process.readAllStandardOutput());
        errors = QString::fromUtf8(process.readAllStandardError());
    }
};

} // namespace

/// The program itself, as it is started from a shell.
class ProgramTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void helpNeedsNeitherADisplayNorABus()
    {
        const Outcome outcome({u"--help"_s});

        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(outcome.output.startsWith(u"Usage: orvella "_s));
        QCOMPARE(outcome.errors, QString());
    }

    void versionNeedsNeitherADisplayNorABus()
    {
        const Outcome outcome({u"--version"_s});

        QCOMPARE(outcome.exitCode, 0);
        QVERIFY(outcome.output.startsWith(u"orvella "_s));
        QCOMPARE(outcome.errors, QString());
    }

    void anUnknownOptionIsAnErrorOnStderr()
    {
        const Outcome outcome({u"--colour"_s});

        QCOMPARE(outcome.exitCode, 2);
        QCOMPARE(outcome.output, QString());
        QCOMPARE(outcome.errors.count(u'\n'), 1);
        QVERIFY(outcome.errors.startsWith(u"orvella: "_s));
        QVERIFY(outcome.errors.contains(u"colour"_s));
    }

    void withoutADisplayThereIsASentenceAndNoCoreDump()
    {
        const Outcome outcome({});

        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.errors, u"orvella: There is no display to show anything on.\n"_s);
    }

    void plainHttpToAnotherComputerStopsItWithASentence()
    {
        const QTemporaryDir profile;
        QProcess process;

        process.start(QStringLiteral(ORVELLA_PROGRAM),
            {u"--profile"_s, profile.path(), u"--set"_s, u"apiBaseURL=http://service.test"_s});

        QVERIFY(process.waitForFinished(kPatienceMs));
        QCOMPARE(process.exitStatus(), QProcess::CrashExit);
        const auto errors = QString::fromUtf8(process.readAllStandardError());
        QVERIFY2(errors.contains(u"The address of the service, the setting apiBaseURL, may be http on this computer"_s),
            qUtf8Printable(errors));
    }

    void aDisplayThatLetsNobodyInIsASentenceAndNoCoreDump_data()
    {
        using Variables = QMap<QString, QString>;
        const std::pair x11 {u"DISPLAY"_s, u":9999"_s};
        const std::pair wayland {u"WAYLAND_DISPLAY"_s, u"nowhere"_s};
        QTest::addColumn<Variables>("variables");
        QTest::newRow("X11") << Variables {x11};
        QTest::newRow("Wayland") << Variables {wayland};
        QTest::newRow("both") << Variables {x11, wayland};
        QTest::newRow("X11, as the viewer wants it") << Variables {x11, {u"QT_QPA_PLATFORM"_s, u"xcb"_s}};
        QTest::newRow("one that Qt does not know") << Variables {x11, {u"QT_QPA_PLATFORM"_s, u"teletype"_s}};
    }

    void aDisplayThatLetsNobodyInIsASentenceAndNoCoreDump()
    {
        using Variables = QMap<QString, QString>;
        QFETCH(const Variables, variables);

        const Outcome outcome({}, variables);

        // What Qt says of the reason comes before it.
        QVERIFY2(outcome.errors.endsWith(u"\norvella: The display does not let the program in.\n"_s),
            qPrintable(outcome.errors));
        QCOMPARE(outcome.exitCode, 1);
        QCOMPARE(outcome.output, QString());
    }

    void aTerminatedProgramEndsInOrderAndLeavesEverythingInItsProfile()
    {
        const QTemporaryDir profile;
        QProcess process;
        process.setProcessChannelMode(QProcess::ForwardedErrorChannel);
        // Nobody listens on the discard port: the registration fails at once.
        process.start(QStringLiteral(ORVELLA_PROGRAM),
            {u"--profile"_s, profile.path(), u"--set"_s, u"apiBaseURL=http://127.0.0.1:9"_s});
        QTRY_VERIFY_WITH_TIMEOUT(
            !QDir(profile.path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot).isEmpty(), kPatienceMs);
        QTest::qWait(500);

        process.terminate();

        QVERIFY(process.waitForFinished(kPatienceMs));
        QCOMPARE(process.exitStatus(), QProcess::NormalExit);
        QCOMPARE(process.exitCode(), 0);
        const auto home = qEnvironmentVariable("HOME");
        QVERIFY(!QFile::exists(home + u"/config/orvella"_s));
        QVERIFY(!QFile::exists(home + u"/config/autostart"_s));
    }
};

QTEST_GUILESS_MAIN(ProgramTest)

#include "ProgramTest.moc"
