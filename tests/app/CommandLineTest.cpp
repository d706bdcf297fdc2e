#include "app/CommandLine.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

Result<CommandLine> parse(const QStringList& options)
{
    return CommandLine::parse(QStringList {u"orvella"_s} + options);
}

} // namespace

class CommandLineTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void withoutOptionsTheProgramRuns()
    {
        const auto commandLine = parse({});

        QVERIFY(commandLine);
        QCOMPARE(commandLine->wish, CommandLine::Wish::run);
        QCOMPARE(commandLine->request, Instance::Request::reopen);
        QVERIFY(!commandLine->profile);
        QVERIFY(commandLine->overlays.empty());
    }

    void oneThingCanBeAskedFor_data()
    {
        QTest::addColumn<QString>("option");
        QTest::addColumn<Instance::Request>("request");
        QTest::newRow("the ad") << u"--open-ad"_s << Instance::Request::openAd;
        QTest::newRow("the settings") << u"--settings"_s << Instance::Request::showSettings;
        QTest::newRow("nothing") << u"--autostart"_s << Instance::Request::nothing;
    }

    void oneThingCanBeAskedFor()
    {
        QFETCH(const QString, option);

        const auto commandLine = parse({option, u"--profile=/tmp/x"_s});

        QVERIFY(commandLine);
        QCOMPARE(commandLine->wish, CommandLine::Wish::run);
        QTEST(commandLine->request, "request");
        QCOMPARE(commandLine->profile, u"/tmp/x"_s);
        QVERIFY(CommandLine::helpText().contains(option));
    }

    void settingsAreJsonOrElseTexts()
    {
        const auto commandLine = parse(
            {u"--set"_s, u"apiBaseURL=http://127.0.0.1:8787"_s, u"--set=autoOpenAds=true"_s, u"--set"_s, u"empty="_s});

        QVERIFY(commandLine);
        QCOMPARE(commandLine->overlays.size(), 3U);
        QCOMPARE(commandLine->overlays.at(0).key, u"apiBaseURL"_s);
        QCOMPARE(commandLine->overlays.at(0).value, Json(u"http://127.0.0.1:8787"_s));
        QCOMPARE(commandLine->overlays.at(1).value, Json(true));
        QCOMPARE(commandLine->overlays.at(2).value, Json(QString()));
    }

    void theProfileIsAFolder()
    {
        QCOMPARE(parse({u"--profile"_s, u"/tmp/x"_s})->profile, u"/tmp/x"_s);
        QCOMPARE(parse({u"--profile=/tmp/x"_s})->profile, u"/tmp/x"_s);
    }

    void helpVersionAndDiagnosisAreWishes()
    {
        QCOMPARE(parse({u"--help"_s})->wish, CommandLine::Wish::showHelp);
        QCOMPARE(parse({u"-h"_s})->wish, CommandLine::Wish::showHelp);
        QCOMPARE(parse({u"--version"_s})->wish, CommandLine::Wish::showVersion);
        QCOMPARE(parse({u"-v"_s})->wish, CommandLine::Wish::showVersion);
        QCOMPARE(parse({u"--diagnose"_s})->wish, CommandLine::Wish::diagnose);
        QVERIFY(CommandLine::helpText().contains(u"--profile DIR"_s));
        QVERIFY(CommandLine::versionText().startsWith(u"orvella "_s));
    }

    void aWrongCommandLineIsRefusedWithASentence_data()
    {
        QTest::addColumn<QStringList>("options");

        QTest::newRow("unknown option") << QStringList {u"--colour"_s};
        QTest::newRow("unknown short option") << QStringList {u"-x"_s};
        QTest::newRow("an argument") << QStringList {u"file.txt"_s};
        QTest::newRow("no value for --set") << QStringList {u"--set"_s};
        QTest::newRow("no equals sign") << QStringList {u"--set"_s, u"autoOpenAds"_s};
        QTest::newRow("no key") << QStringList {u"--set"_s, u"=true"_s};
        QTest::newRow("no value for --profile") << QStringList {u"--profile"_s};
        QTest::newRow("empty profile") << QStringList {u"--profile="_s};
        QTest::newRow("the ad and the settings") << QStringList {u"--open-ad"_s, u"--settings"_s};
        QTest::newRow("an action at login") << QStringList {u"--autostart"_s, u"--open-ad"_s};
        QTest::newRow("an action with a value") << QStringList {u"--settings=all"_s};
        QTest::newRow("help with a value") << QStringList {u"--help=me"_s};
    }

    void aWrongCommandLineIsRefusedWithASentence()
    {
        QFETCH(QStringList, options);

        const auto commandLine = parse(options);

        QVERIFY(!commandLine);
        QCOMPARE(commandLine.error().kind, Failure::Kind::refused);
        QVERIFY(!commandLine.error().description.isEmpty());
    }
};

QTEST_GUILESS_MAIN(CommandLineTest)

#include "CommandLineTest.moc"
