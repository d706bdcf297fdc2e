#include "base/Version.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 60'000;

QString packaging(const QString& path)
{
    return QStringLiteral(ORVELLA_SOURCE_DIR) + u"/packaging/"_s + path;
}

QString contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("%s cannot be read.", qPrintable(path));
    return QString::fromUtf8(file.readAll());
}

/// The first group of the first match.
QString found(const QString& text, const QString& pattern)
{
    return QRegularExpression(pattern, QRegularExpression::MultilineOption).match(text).captured(1);
}

/// All that the program is made of.
QString everySource()
{
    QString sources;
    QDirIterator files(QStringLiteral(ORVELLA_SOURCE_DIR) + u"/Velmora"_s, {u"*.h"_s, u"*.cpp"_s}, QDir::Files,
        QDirIterator::Subdirectories);
    while (files.hasNext())
        sources += contentOf(files.next());
    return sources;
}

/// The package that installs a library whose file's name begins so; empty where none does.
QString debianPackageWith(const QString& file)
{
    QProcess process;
    process.start(u"dpkg"_s, {u"--search"_s, u"*/"_s + file + u'*'});
    if (!process.waitForFinished(kPatienceMs))
        return {};
    return found(QString::fromUtf8(process.readAll()), u"^([a-z0-9.+-]+):"_s);
}

/// What a checker has to say; nothing where all is well.
QString complaints(const QString& program, const QStringList& arguments)
{
    QProcess process;
    process.setProcessChannelMode(QProcess::MergedChannels);
    process.start(program, arguments);
    if (!process.waitForFinished(kPatienceMs))
        return program + u" does not run"_s;
    const auto output = QString::fromUtf8(process.readAll());
    if (process.exitCode() != 0)
        return u"%1 ends with %2: %3"_s.arg(program).arg(process.exitCode()).arg(output);
    return output.contains(u"warning"_s, Qt::CaseInsensitive) ? output : QString();
}

} // namespace

/// What desktops and software centres read of the program.
class MetadataTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theDesktopEntryIsValid()
    {
        QCOMPARE(complaints(u"desktop-file-validate"_s, {packaging(u"linux/io.orvella.Orvella.desktop"_s)}), QString());
    }

    void theMetainfoIsValid()
    {
        QCOMPARE(
            complaints(u"appstreamcli"_s,
                {u"validate"_s, u"--no-net"_s, u"--no-color"_s, packaging(u"linux/io.orvella.Orvella.metainfo.xml"_s)}),
            QString());
    }

    void theMetainfoRatesTheAdsAndShowsTheProgram()
    {
        const auto metainfo = contentOf(packaging(u"linux/io.orvella.Orvella.metainfo.xml"_s));

        QCOMPARE(found(metainfo, u"<content_rating type=\"([^\"]+)\""_s), u"oars-1.1"_s);
        QCOMPARE(found(metainfo, u"<content_attribute id=\"money-advertising\">([^<]+)<"_s), u"intense"_s);
        QVERIFY(found(metainfo, u"<screenshot type=\"default\">\\s*<caption>[^<]+</caption>\\s*<image>([^<]+)<"_s)
                .startsWith(u"https://"_s));
    }

    void theVersionIsTheSameEverywhere_data()
    {
        QTest::addColumn<QString>("file");
        QTest::addColumn<QString>("pattern");

        QTest::newRow("metainfo") << u"linux/io.orvella.Orvella.metainfo.xml"_s << u"<release version=\"([^\"]+)\""_s;
        QTest::newRow("changelog") << u"debian/changelog"_s << u"^orvella \\(([^)]+)\\)"_s;
        QTest::newRow("manual") << u"linux/orvella.1"_s << u"^\\.TH .*\"Orvella ([^\"]+)\""_s;
        QTest::newRow("manual of the sandbox") << u"linux/orvella-sandbox.1"_s << u"^\\.TH .*\"Orvella ([^\"]+)\""_s;
    }

    void theVersionIsTheSameEverywhere()
    {
        QFETCH(const QString, file);
        QFETCH(const QString, pattern);

        QCOMPARE(found(contentOf(packaging(file)), pattern), QString(kVersion));
    }

    void everyLanguageOfTheProgramIsInTheDesktopEntry_data()
    {
        QTest::addColumn<QString>("key");
        for (const auto* const key : {"GenericName", "Comment", "Keywords"})
            QTest::newRow(key) << QString::fromLatin1(key);
    }

    void everyLanguageOfTheProgramIsInTheDesktopEntry()
    {
        QFETCH(const QString, key);
        const auto entry = contentOf(packaging(u"linux/io.orvella.Orvella.desktop"_s));
        const auto files = QDir(QStringLiteral(ORVELLA_SOURCE_DIR) + u"/translations"_s).entryList({u"*.ts"_s});
        QVERIFY(!files.isEmpty());

        for (const auto& file : files) {
            const auto language = found(file, u"orvella_(.+)\\.ts"_s);
            QVERIFY2(entry.contains(u"\n%1[%2]="_s.arg(key, language)), qUtf8Printable(language));
        }
    }

    /// The program's file does not name them, so whoever makes a package would not find them.
    void everyLibraryThatIsLoadedLateIsNamedToThePackages()
    {
        // The name may be a parameter, with libcurl's own as its default.
        static const QRegularExpression name(
            uR"re((?:LateLibrary \w+[({]|QString& name = )QStringLiteral\("([a-z0-9-]+)"\))re"_s);
        static const QRegularExpression use(uR"(LateLibrary \w+[({])"_s);
        const auto sources = everySource();
        QStringList libraries;
        for (const auto& match : name.globalMatch(sources))
            libraries.append(match.captured(1));
        QVERIFY(!libraries.isEmpty());
        QCOMPARE(libraries.size(), sources.count(use));

        const auto appImage = contentOf(packaging(u"appimage/build"_s));
        const auto package = contentOf(packaging(u"debian/control"_s));
        for (const auto& library : libraries) {
            const auto file = u"lib%1.so."_s.arg(library);
            QVERIFY2(appImage.contains(u' ' + file), qUtf8Printable(file));
            const auto owner = debianPackageWith(file);
            QVERIFY2(!owner.isEmpty() && package.contains(u"\n %1,\n"_s.arg(owner)), qUtf8Printable(file + owner));
        }
    }

    void everythingIsInstalledInItsPlace()
    {
        const QTemporaryDir prefix;

        QCOMPARE(complaints(QStringLiteral(ORVELLA_CMAKE),
                     {u"--install"_s, QStringLiteral(ORVELLA_BINARY_DIR), u"--prefix"_s, prefix.path()}),
            QString());

        for (const auto* const file : {
                 "bin/orvella",
                 "bin/orvella-sandbox",
                 "share/applications/io.orvella.Orvella.desktop",
                 "share/bash-completion/completions/orvella",
                 "share/bash-completion/completions/orvella-sandbox",
                 "share/dbus-1/services/io.orvella.Orvella.service",
                 "share/icons/hicolor/scalable/apps/io.orvella.Orvella.svg",
                 "share/icons/hicolor/symbolic/apps/io.orvella.Orvella-symbolic.svg",
                 "share/man/man1/orvella.1",
                 "share/man/man1/orvella-sandbox.1",
                 "share/metainfo/io.orvella.Orvella.metainfo.xml",
             })
            QVERIFY2(QFile::exists(prefix.filePath(QString::fromLatin1(file))), file);
        const QDir libraries(prefix.filePath(QStringLiteral(ORVELLA_LIBRARIES)));
        QCOMPARE(libraries.entryList(QDir::Files), QStringList {u"orvella-updater.so"_s});
        const auto service = contentOf(prefix.filePath(u"share/dbus-1/services/io.orvella.Orvella.service"_s));
        QVERIFY(found(service, u"^Exec=(.*)$"_s).startsWith(u'/'));
        QVERIFY(!service.contains(u'@'));
    }
};

QTEST_GUILESS_MAIN(MetadataTest)

#include "MetadataTest.moc"
