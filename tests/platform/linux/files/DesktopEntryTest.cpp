#include "platform/linux/files/DesktopEntry.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class DesktopEntryTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void onlyTheMainGroupIsRead()
    {
        const auto entry = DesktopEntry::parse(u"# comment\n\n[Desktop Entry]\nName=Editor\n#Exec=no\n"
                                               "Exec = edit %F \r\nnothing\n=nothing\n"
                                               "[Desktop Action new]\nName=New\nIcon=new\n"_s);

        QVERIFY(entry);
        QCOMPARE(entry->string(u"Name"_s), u"Editor"_s);
        QCOMPARE(entry->string(u"Exec"_s), u"edit %F"_s);
        QCOMPARE(entry->string(u"Icon"_s), std::nullopt);
        QCOMPARE(entry->string(u""_s), std::nullopt);
    }

    void withoutTheMainGroupThereIsNoEntry()
    {
        QVERIFY(!DesktopEntry::parse(u""_s));
        QVERIFY(!DesktopEntry::parse(u"Name=Editor\n"_s));
        QVERIFY(!DesktopEntry::parse(u"[Other]\nName=Editor\n"_s));
    }

    void onlySpacesAroundAValueDoNotCount()
    {
        const auto entry = DesktopEntry::parse(u"\t [Desktop Entry] \r\n\tName \t=  \u00a0a b\u2003 \t\r\n"_s);

        QVERIFY(entry);
        QCOMPARE(entry->string(u"Name"_s), u"\u00a0a b\u2003"_s);
    }

    void theNameIsInTheLanguageOfTheLocale_data()
    {
        QTest::addColumn<QString>("locale");
        QTest::addColumn<QString>("name");

        QTest::newRow("language and country") << u"de_AT.UTF-8"_s << u"Austrian"_s;
        QTest::newRow("language only") << u"de_CH.UTF-8"_s << u"German"_s;
        QTest::newRow("the modifier before the language") << u"sr_RS@latin"_s << u"Latin Serbian"_s;
        QTest::newRow("everything given") << u"sr_ME.UTF-8@latin"_s << u"Montenegrin"_s;
        QTest::newRow("no translation") << u"fr_FR"_s << u"Plain"_s;
        QTest::newRow("C") << u"C"_s << u"Plain"_s;
        QTest::newRow("no locale's name") << u"../x"_s << u"Plain"_s;
        QTest::newRow("nothing") << u""_s << u"Plain"_s;
    }

    void theNameIsInTheLanguageOfTheLocale()
    {
        QFETCH(QString, locale);
        QFETCH(QString, name);
        const auto entry = DesktopEntry::parse(
            u"[Desktop Entry]\nName=Plain\nName[de]=German\nName[de_AT]=Austrian\nName[sr]=Serbian\n"
            "Name[sr@latin]=Latin Serbian\nName[sr_ME@latin]=Montenegrin\n"_s);

        QCOMPARE(entry->localized(u"Name"_s, locale), name);
    }

    void onlyTrueAndFalseAreBooleans()
    {
        const auto entry = DesktopEntry::parse(u"[Desktop Entry]\na=true\nb=false\nc=1\nd=True\ne=\n"_s);

        QCOMPARE(entry->boolean(u"a"_s), true);
        QCOMPARE(entry->boolean(u"b"_s), false);
        for (const auto& key : {u"c"_s, u"d"_s, u"e"_s, u"f"_s})
            QCOMPARE(entry->boolean(key), std::nullopt);
    }

    void escapesAreResolvedAndWritten()
    {
        const auto entry = DesktopEntry::parse(u"[Desktop Entry]\na=\\sx\\ty\\nz\\r\\\\n\\q\\"_s);

        QCOMPARE(entry->string(u"a"_s), u" x\ty\nz\r\\n\\q\\"_s);
        for (const auto& text :
            {u" x\ty\nz\r\\n"_s, u"plain"_s, u"C:\\new\\sx"_s, u""_s, u" "_s, u"  x  "_s, u"\u00a0\v"_s}) {
            const auto written = u"[Desktop Entry]\na="_s + DesktopEntry::escaped(text) + u'\n';
            QCOMPARE(DesktopEntry::parse(written)->string(u"a"_s), text);
        }
    }

    void argumentsAreQuotedForTheCommandLine()
    {
        QCOMPARE(DesktopEntry::quotedArgument(u"/usr/bin/orvella"_s), u"\"/usr/bin/orvella\""_s);
        QCOMPARE(DesktopEntry::quotedArgument(u"a b$c`d\"e\\f%g"_s), u"\"a b\\$c\\`d\\\"e\\\\f%%g\""_s);
    }

    void whatIsNoFileIsNoEntry()
    {
        const QTemporaryDir folder;
        QCOMPARE(::mkfifo(QFile::encodeName(folder.filePath(u"pipe"_s)).constData(), 0600), 0);

        QVERIFY(!DesktopEntry::read(folder.filePath(u"absent"_s)));
        QVERIFY(!DesktopEntry::read(folder.filePath(u"pipe"_s)));
        QVERIFY(!DesktopEntry::read(folder.path()));
    }

    void theCommandIsAListOfWords_data()
    {
        QTest::addColumn<QString>("value");
        QTest::addColumn<QStringList>("words");
        QTest::newRow("none") << u""_s << QStringList();
        QTest::newRow("one") << u"orvella"_s << QStringList {u"orvella"_s};
        QTest::newRow("several") << u"  env  A=1 orvella "_s << QStringList {u"env"_s, u"A=1"_s, u"orvella"_s};
        QTest::newRow("quoted") << u"\"/a b/c\" \"\" d"_s << QStringList {u"/a b/c"_s, u""_s, u"d"_s};
        QTest::newRow("escaped") << u"\"\\\\\"a\\\\\\\\\\\\$\""_s << QStringList {u"\"a\\$"_s};
        QTest::newRow("percent signs") << u"a%%b %% \"%%%%\" %F"_s << QStringList {u"a%b"_s, u"%"_s, u"%%"_s, u"%F"_s};
        QTest::newRow("a quote that does not end") << u"\"a b"_s << QStringList {u"a b"_s};
    }

    void theCommandIsAListOfWords()
    {
        QFETCH(const QString, value);

        const auto entry = DesktopEntry::parse(u"[Desktop Entry]\nExec="_s + value + u'\n');

        QTEST(entry->command(), "words");
    }

    void aCommandThatWasQuotedIsReadBackAsItWas()
    {
        const QStringList words {u"/a b/\"c\""_s, u"$x`y`\\"_s, u"--d=e\\n"_s, u"100% %F %%"_s, u""_s};
        QStringList quoted;
        for (const auto& word : words)
            quoted.append(DesktopEntry::quotedArgument(word));

        const auto entry =
            DesktopEntry::parse(u"[Desktop Entry]\nExec="_s + DesktopEntry::escaped(quoted.join(u' ')) + u'\n');

        QCOMPARE(entry->command(), words);
    }

    void aListIsSeparatedBySemicolons()
    {
        const auto entry = DesktopEntry::parse(u"[Desktop Entry]\nA=x;y;\nB=z\nC=\n"_s);

        QCOMPARE(entry->list(u"A"_s), (QStringList {u"x"_s, u"y"_s}));
        QCOMPARE(entry->list(u"B"_s), QStringList {u"z"_s});
        QCOMPARE(entry->list(u"C"_s), QStringList());
        QCOMPARE(entry->list(u"D"_s), QStringList());
    }
};

QTEST_GUILESS_MAIN(DesktopEntryTest)

#include "DesktopEntryTest.moc"
