#include "core/AppState.h"
#include "platform/linux/FileSettingsStore.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/OrdinaryUser.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <fcntl.h>
#include <functional>
#include <sys/stat.h>
#include <unistd.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The state as the program makes it, over a settings file.
struct Run {
    FakePlatform platform;
    FakeTransport transport;
    FileSettingsStore settings;
    std::unique_ptr<AppState> state;

    explicit Run(const QString& path)
        : settings(path)
    {
        const auto fake = platform.lend();
        const Platform lent {fake.clock, settings, fake.secrets, fake.loginItem, fake.locale, fake.device,
            fake.applications, fake.browser, fake.statusItem, fake.windows, fake.look, fake.foreground, fake.updater,
            fake.report, fake.proxies};
        state = std::make_unique<AppState>(lent, transport);
    }
};

/// The five settings of the viewer as the state has them.
using Settings = std::array<bool, 5>;

constexpr Settings kDefaults {true, false, false, false, true};
constexpr Settings kStored {false, true, true, true, false};

const QStringList kKeys {
    u"anonymousMode"_s, u"appSignalConsent"_s, u"ageConfirmed"_s, u"autoOpenAds"_s, u"showLaunchWindowAtStartup"_s};

Settings settingsOf(const AppState& state)
{
    return {state.anonymousMode(), state.appSignalConsent(), state.ageConfirmed(), state.autoOpenAds(),
        state.showLaunchWindowAtStartup()};
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(absent)");
}

void write(const QString& path, const QByteArray& text)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size())
        qFatal("The file cannot be written.");
}

} // namespace

/// Whatever is in the place of the settings file: what the program then has, and what becomes of it.
class SettingsFileTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        m_folder = std::make_unique<QTemporaryDir>();
        m_path = m_folder->filePath(u"settings.json"_s);
        Run run(m_path);
        run.state->ageConfirmed = true;
        run.state->anonymousMode = false;
        run.state->appSignalConsent = true;
        run.state->autoOpenAds = true;
        run.state->showLaunchWindowAtStartup = false;
        m_whole = contentOf(m_path);
    }

    void whatTheProgramWroteIsReadAgain()
    {
        QCOMPARE(settingsOf(*Run(m_path).state), kStored);
        QCOMPARE(contentOf(m_path), m_whole);
    }

    void aFileThatIsCutOffAnywhereGivesTheDefaultsAndIsKept()
    {
        for (qsizetype size = 0; size < m_whole.size(); ++size) {
            const auto part = m_whole.first(size);
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"settings.json"_s);
            write(path, part);
            // Without its last line end it is whole.
            const auto isWhole = size == m_whole.size() - 1;

            Run run(path);

            QCOMPARE(settingsOf(*run.state), isWhole ? kStored : kDefaults);
            run.state->autoOpenAds = true;
            QCOMPARE(contentOf(path + u".unreadable-1"_s), isWhole ? QByteArray("(absent)") : part);
            auto expected = isWhole ? kStored : kDefaults;
            expected[3] = true;
            QCOMPARE(settingsOf(*Run(path).state), expected);
        }
    }

    void contentThatIsNoSettingsGivesTheDefaultsAndIsKept_data()
    {
        QTest::addColumn<QByteArray>("content");
        QTest::newRow("nothing") << QByteArray();
        QTest::newRow("only spaces") << QByteArray("  \n");
        QTest::newRow("no JSON") << QByteArray("anonymousMode=false\n");
        QTest::newRow("a list") << QByteArray(R"(["anonymousMode", false])");
        QTest::newRow("a string") << QByteArray(R"("anonymousMode")");
        QTest::newRow("a number") << QByteArray("0");
        QTest::newRow("false") << QByteArray("false");
        QTest::newRow("null") << QByteArray("null");
        QTest::newRow("two objects") << m_whole + m_whole;
        QTest::newRow("a comma too many") << QByteArray(R"({"anonymousMode": false,})");
        QTest::newRow("a comment") << QByteArray("{\"anonymousMode\": false} // mine");
        QTest::newRow("a word that is no Boolean") << QByteArray(R"({"anonymousMode": False})");
        QTest::newRow("a number that is none") << QByteArray(R"({"anonymousMode": false, "a": 1e400})");
        QTest::newRow("a mark of the byte order alone") << QByteArray("\xef\xbb\xbf");
        QTest::newRow("bytes that are not UTF-8") << QByteArray("{\"anonymousMode\": false, \"a\": \"\xff\xfe\"}");
        QTest::newRow("UTF-16") << QByteArray("{\0\"\0a\0\"\0:\0f\0a\0l\0s\0e\0}\0", 20);
        QTest::newRow("zero bytes, as after a crash") << QByteArray(400, '\0');
        QTest::newRow("nesting without end") << QByteArray(100'000, '[');
        QTest::newRow("10 MB of settings") << "{\"anonymousMode\": false" + QByteArray(10 << 20, ' ') + "}";
    }

    void contentThatIsNoSettingsGivesTheDefaultsAndIsKept()
    {
        QFETCH(const QByteArray, content);
        write(m_path, content);
        QCOMPARE(::chmod(QFile::encodeName(m_path).constData(), 0644), 0);

        Run run(m_path);

        QCOMPARE(settingsOf(*run.state), kDefaults);
        const auto aside = m_path + u".unreadable-1"_s;
        QVERIFY(contentOf(aside) == content);
        QCOMPARE(QFile::permissions(aside) & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
        run.state->autoOpenAds = true;
        QCOMPARE(settingsOf(*Run(m_path).state), (Settings {true, false, false, true, true}));
        QVERIFY(!QFile::exists(m_path + u".unreadable-2"_s));
    }

    void aValueOfAnotherTypeGivesTheDefaultOfItsKeyAlone_data()
    {
        QTest::addColumn<QString>("key");
        QTest::addColumn<QByteArray>("value");
        for (const auto& key : kKeys) {
            for (const auto* value : {"null", "0", "1", "0.0", "\"\"", "\"false\"", "[]", "[false]", "{}",
                     R"({"value": false})", "1e300", "-9223372036854775809"})
                QTest::addRow("%s: %s", qPrintable(key), value) << key << QByteArray(value);
        }
    }

    void aValueOfAnotherTypeGivesTheDefaultOfItsKeyAlone()
    {
        QFETCH(const QString, key);
        QFETCH(const QByteArray, value);
        const auto place = static_cast<size_t>(kKeys.indexOf(key));
        const QByteArray before = "\"" + key.toUtf8() + "\": " + (kStored.at(place) ? "true" : "false");
        QVERIFY(m_whole.contains(before));
        write(m_path, QByteArray(m_whole).replace(before, "\"" + key.toUtf8() + "\": " + value));
        auto expected = kStored;
        expected.at(place) = kDefaults.at(place);

        const Run run(m_path);

        QCOMPARE(settingsOf(*run.state), expected);
        QVERIFY(!QFile::exists(m_path + u".unreadable-1"_s));
    }

    void ofEqualKeysTheLastOneCounts()
    {
        write(m_path, R"({"anonymousMode": true, "didConfigureLaunchAtLogin": true, "anonymousMode": false})");
        QCOMPARE(Run(m_path).state->anonymousMode(), false);

        write(m_path, R"({"anonymousMode": false, "didConfigureLaunchAtLogin": true, "anonymousMode": true})");
        QCOMPARE(Run(m_path).state->anonymousMode(), true);

        write(m_path, R"({"anonymousMode": false, "didConfigureLaunchAtLogin": true, "anonymousMode": "x"})");
        QCOMPARE(Run(m_path).state->anonymousMode(), true);
    }

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

    void whatBecomesOfTheFileInMidRun_data()
    {
        using Change = std::function<void(const QString&)>;
        QTest::addColumn<Change>("change");
        QTest::addColumn<Settings>("later");
        QTest::addColumn<QByteArray>("aside");
        // Each followed by a change of autoOpenAds.
        QTest::newRow("it vanishes") << Change([](const QString& path) { QFile::remove(path); })
                                     << Settings {false, true, true, false, false} << QByteArray("(absent)");
        QTest::newRow("it becomes unreadable") << Change([](const QString& path) { write(path, "{"); })
                                               << Settings {false, true, true, false, false} << QByteArray("{");
        QTest::newRow("somebody else changes a setting")
            << Change([](const QString& path) { FileSettingsStore(path).setBoolean(u"anonymousMode"_s, true); })
            << Settings {true, true, true, false, false} << QByteArray("(absent)");
        QTest::newRow("somebody puts back an older one")
            << Change([](const QString& path) { write(path, R"({"anonymousMode": true})"); })
            << Settings {true, false, false, false, true} << QByteArray("(absent)");
    }

    void whatBecomesOfTheFileInMidRun()
    {
        QFETCH(const std::function<void(const QString&)>, change);
        QFETCH(const Settings, later);
        QFETCH(const QByteArray, aside);
        Run run(m_path);
        change(m_path);

        run.state->autoOpenAds = false;

        QCOMPARE(settingsOf(*run.state), (Settings {false, true, true, false, false}));
        QCOMPARE(settingsOf(*Run(m_path).state), later);
        QCOMPARE(contentOf(m_path + u".unreadable-1"_s), aside);
    }

    void aFileThatAppearsInMidRunKeepsWhatTheChangeDoesNotTouch()
    {
        QVERIFY(QFile::remove(m_path));
        Run run(m_path);
        QVERIFY(QFile::remove(m_path));
        write(m_path, m_whole);

        run.state->autoOpenAds = false;

        QCOMPARE(settingsOf(*Run(m_path).state), (Settings {false, true, true, false, false}));
    }

    void ofTwoProcessesNeitherTakesBackWhatTheOtherHasSet()
    {
        FileSettingsStore first(m_path);
        FileSettingsStore second(m_path);

        first.setBoolean(u"anonymousMode"_s, true);
        second.setBoolean(u"autoOpenAds"_s, false);
        first.setBoolean(u"showLaunchWindowAtStartup"_s, true);

        QCOMPARE(settingsOf(*Run(m_path).state), (Settings {true, true, true, false, true}));
    }

private:
    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

    std::unique_ptr<QTemporaryDir> m_folder;
    QString m_path;
    /// What the program itself wrote.
    QByteArray m_whole;
};

QTEST_GUILESS_MAIN(SettingsFileTest)

#include "SettingsFileTest.moc"
