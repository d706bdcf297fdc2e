#include "platform/linux/settings/SettingsFileFixture.h"
#include "support/OrdinaryUser.h"

#include <QDir>

#include <functional>
#include <sys/stat.h>
#include <unistd.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// Whatever is in the place of the settings file, and whatever its folder allows.
class SettingsFilePlaceTest final : public QObject, private SettingsFileFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void whatIsNoFileIsLeftAloneAndNotWaitedFor_data()
    {
        using Make = std::function<bool(const char*)>;
        QTest::addColumn<Make>("make");
        QTest::newRow("a folder") << Make([](const char* path) { return ::mkdir(path, 0700) == 0; });
        QTest::newRow("a pipe") << Make([](const char* path) { return ::mkfifo(path, 0600) == 0; });
        QTest::newRow("a link to zeros") << Make([](const char* path) { return ::symlink("/dev/zero", path) == 0; });
        QTest::newRow("a link to nothing") << Make([](const char* path) { return ::symlink("/dev/null", path) == 0; });
        QTest::newRow("a link to full") << Make([](const char* path) { return ::symlink("/dev/full", path) == 0; });
        QTest::newRow("a link to a folder") << Make([](const char* path) { return ::symlink("/tmp", path) == 0; });
        QTest::newRow("a link to itself")
            << Make([](const char* path) { return ::symlink("settings.json", path) == 0; });
    }

    void whatIsNoFileIsLeftAloneAndNotWaitedFor()
    {
        QFETCH(const std::function<bool(const char*)>, make);
        QVERIFY(QFile::remove(m_path));
        QVERIFY(make(QFile::encodeName(m_path).constData()));
        struct stat before {};
        QCOMPARE(::lstat(QFile::encodeName(m_path).constData(), &before), 0);

        Run run(m_path);
        run.state->autoOpenAds = true;

        QCOMPARE(settingsOf(*run.state), (Settings {true, false, false, true, true}));
        struct stat after {};
        QCOMPARE(::lstat(QFile::encodeName(m_path).constData(), &after), 0);
        QCOMPARE(after.st_ino, before.st_ino);
        QCOMPARE(entries(), QStringList {u"settings.json"_s});

        // As soon as the place is free, everything goes out.
        QVERIFY(
            QFileInfo(m_path).isDir() && !QFileInfo(m_path).isSymLink() ? QDir().rmdir(m_path) : QFile::remove(m_path));
        run.state->anonymousMode = true;
        QCOMPARE(settingsOf(*Run(m_path).state), (Settings {true, false, false, true, true}));
    }

    void aMissingFolderIsMade()
    {
        const auto path = m_folder->filePath(u"config/orvella/settings.json"_s);
        Run run(path);
        QCOMPARE(settingsOf(*run.state), kDefaults);

        run.state->autoOpenAds = true;

        QCOMPARE(settingsOf(*Run(path).state), (Settings {true, false, false, true, true}));
    }

    void aFolderThatGoesInMidRunIsMadeAgainWithAllSettings()
    {
        const auto path = m_folder->filePath(u"config/settings.json"_s);
        QVERIFY(QDir().mkpath(m_folder->filePath(u"config"_s)));
        write(path, m_whole);
        Run run(path);
        QVERIFY(QDir(m_folder->filePath(u"config"_s)).removeRecursively());

        run.state->autoOpenAds = false;

        QCOMPARE(settingsOf(*Run(path).state), (Settings {false, true, true, false, false}));
    }

    void aFileInTheFoldersPlaceIsLeftAlone()
    {
        const auto path = m_path + u"/settings.json"_s;
        Run run(path);
        run.state->autoOpenAds = true;

        QCOMPARE(settingsOf(*run.state), (Settings {true, false, false, true, true}));
        QCOMPARE(contentOf(m_path), m_whole);
    }

    void aReadOnlyFolderKeepsTheFileAndTheNextWriteGoesOut()
    {
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555));
        QFile::setPermissions(m_path, QFile::Permissions(0x4444));
        Run run(m_path);
        {
            const OrdinaryUser user;
            run.state->autoOpenAds = false;
        }
        QCOMPARE(settingsOf(*run.state), (Settings {false, true, true, false, false}));
        QCOMPARE(contentOf(m_path), m_whole);
        QCOMPARE(entries(), QStringList {u"settings.json"_s});
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));

        run.state->showLaunchWindowAtStartup = true;

        QCOMPARE(settingsOf(*Run(m_path).state), (Settings {false, true, true, false, true}));
    }

    void aReadOnlyFileIsReplacedForTheViewerHasSaidWhatItIsToSay()
    {
        QCOMPARE(::chown(QFile::encodeName(m_folder->path()).constData(), 65534, 65534), ::geteuid() == 0 ? 0 : -1);
        QFile::setPermissions(m_path, QFile::Permissions(0x4444));
        Run run(m_path);
        {
            const OrdinaryUser user;
            run.state->anonymousMode = true;
        }

        QCOMPARE(Run(m_path).state->anonymousMode(), true);
        QCOMPARE(QFile::permissions(m_path) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void aLinkThatLeadsNowhereGetsItsTarget()
    {
        QVERIFY(QFile::remove(m_path));
        QVERIFY(QFile::link(u"dotfiles/orvella.json"_s, m_path));
        Run run(m_path);

        run.state->autoOpenAds = true;

        QVERIFY(QFileInfo(m_path).isSymLink());
        QVERIFY(contentOf(m_folder->filePath(u"dotfiles/orvella.json"_s)).contains("\"autoOpenAds\": true"));
        QCOMPARE(settingsOf(*Run(m_path).state), (Settings {true, false, false, true, true}));
    }

    void aLinkToAnotherFileStaysALink()
    {
        const auto real = m_folder->filePath(u"orvella.json"_s);
        QVERIFY(QFile::rename(m_path, real));
        QVERIFY(QFile::link(real, m_path));
        Run run(m_path);
        QCOMPARE(settingsOf(*run.state), kStored);

        run.state->autoOpenAds = false;

        QCOMPARE(QFileInfo(m_path).symLinkTarget(), real);
        QCOMPARE(settingsOf(*Run(real).state), (Settings {false, true, true, false, false}));
    }

private:
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }
};

QTEST_GUILESS_MAIN(SettingsFilePlaceTest)

#include "SettingsFilePlaceTest.moc"
