#include "platform/linux/settings/SettingsFileFixture.h"

#include <functional>
#include <sys/stat.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const QStringList kKeys {
    u"anonymousMode"_s, u"appSignalConsent"_s, u"ageConfirmed"_s, u"autoOpenAds"_s, u"showLaunchWindowAtStartup"_s};

} // namespace

/// Whatever is in the settings file: what the program then has, and what becomes of it.
class SettingsFileTest final : public QObject, private SettingsFileFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

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
};

QTEST_GUILESS_MAIN(SettingsFileTest)

#include "SettingsFileTest.moc"
