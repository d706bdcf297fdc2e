#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSet>
#include <QTest>

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 30'000;

QString outputOf(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(kPatienceMs) || process.exitCode() != 0)
        return u"%1 fails: %2"_s.arg(program, QString::fromUtf8(process.readAll()));
    return QString::fromUtf8(process.readAll());
}

QString linuxFile(const QString& name)
{
    return QStringLiteral(ORVELLA_SOURCE_DIR) + u"/packaging/linux/"_s + name;
}

/// The long options that a text speaks of.
QSet<QString> optionsIn(const QString& text)
{
    static const QRegularExpression option(u"(?<![\\w-])--[a-z][a-z-]*"_s);
    QSet<QString> options;
    for (auto matches = option.globalMatch(text); matches.hasNext();)
        options.insert(matches.next().captured());
    return options;
}

/// The page as a reader sees it.
QString manual(const QString& name)
{
    return outputOf(u"groff"_s, {u"-man"_s, u"-Tutf8"_s, u"-P-cbou"_s, u"-rLL=200n"_s, linuxFile(name + u".1"_s)})
        .replace(u"‐"_s, u"-"_s);
}

/// What a shell offers after these words.
QSet<QString> completions(const QString& program, const QStringList& words)
{
    const auto script = uR"(
        source /usr/share/bash-completion/bash_completion
        source "$1"
        shift
        COMP_WORDS=("$@") COMP_CWORD=$(($# - 1)) COMP_LINE="$*"
        COMP_POINT=${#COMP_LINE}
        compopt() { :; }
        ${FUNCTION} "$1" "${COMP_WORDS[COMP_CWORD]}" "${COMP_WORDS[COMP_CWORD-1]}"
        printf '%s\n' "${COMPREPLY[@]}"
    )"_s;
    QProcess shell;
    auto environment = QProcessEnvironment::systemEnvironment();
    environment.insert(u"FUNCTION"_s, u'_' + QString(program).replace(u'-', u'_'));
    shell.setProcessEnvironment(environment);
    shell.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    shell.start(
        u"bash"_s, QStringList {u"-c"_s, script, u"bash"_s, linuxFile(u"completions/"_s + program), program} + words);
    if (!shell.waitForFinished(kPatienceMs))
        return {u"no end"_s};
    const auto lines = QString::fromUtf8(shell.readAllStandardOutput()).split(u'\n', Qt::SkipEmptyParts);
    return {lines.begin(), lines.end()};
}

QString path(const QString& program)
{
    return program == u"orvella" ? QStringLiteral(ORVELLA_PROGRAM) : QStringLiteral(ORVELLA_SANDBOX);
}

void addBothPrograms()
{
    QTest::addColumn<QString>("program");
    QTest::newRow("the program") << u"orvella"_s;
    QTest::newRow("the sandbox") << u"orvella-sandbox"_s;
}

} // namespace

/// The manual pages and the completion of the shell say what the programs do.
class ManualsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aManualIsWrittenWithoutAFault_data() { addBothPrograms(); }

    void aManualIsWrittenWithoutAFault()
    {
        QFETCH(const QString, program);

        QCOMPARE(
            outputOf(u"groff"_s, {u"-man"_s, u"-Tutf8"_s, u"-ww"_s, u"-z"_s, linuxFile(program + u".1"_s)}), QString());
        QVERIFY(manual(program).contains(u"SYNOPSIS"_s));
    }

    void aManualHasTheOptionsOfItsProgram_data() { addBothPrograms(); }

    void aManualHasTheOptionsOfItsProgram()
    {
        QFETCH(const QString, program);
        const auto options = optionsIn(outputOf(path(program), {u"--help"_s}));
        QVERIFY(options.size() >= 4);

        const auto section = manual(program).section(u"OPTIONS"_s, 1).section(u"EXAMPLES"_s, 0, 0);

        QCOMPARE(optionsIn(section), options);
    }

    void theShellCompletesTheOptionsOfAProgram_data() { addBothPrograms(); }

    void theShellCompletesTheOptionsOfAProgram()
    {
        QFETCH(const QString, program);

        QCOMPARE(completions(program, {u"--"_s}), optionsIn(outputOf(path(program), {u"--help"_s})));
    }

    void theShellCompletesWhatIsBegun()
    {
        QCOMPARE(completions(u"orvella"_s, {u"--prof"_s}), QSet<QString> {u"--profile"_s});
        QCOMPARE(completions(u"orvella"_s, {u"--set"_s, u"api"_s}), QSet<QString> {u"apiBaseURL="_s});
        QCOMPARE(completions(u"orvella-sandbox"_s, {u"--fault"_s, u"hea"_s}), QSet<QString> {u"heartbeat="_s});
        QCOMPARE(completions(u"orvella-sandbox"_s, {u"--port"_s, QString()}), QSet<QString> {});
    }
};

QTEST_GUILESS_MAIN(ManualsTest)

#include "ManualsTest.moc"
