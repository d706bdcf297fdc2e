#include "platform/linux/settings/FileSettingsStore.h"

#include "support/OrdinaryUser.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <limits>
#include <sys/stat.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class FileSettingsStoreTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder.emplace();
        QVERIFY(m_folder->isValid());
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));
    }

    void aMissingFileHasNoValuesAndIsNotMadeByReading()
    {
        const FileSettingsStore store(path());

        QCOMPARE(store.boolean(u"anonymousMode"_s), std::nullopt);
        QCOMPARE(store.string(u"apiBaseURL"_s), std::nullopt);
        QVERIFY(entries().isEmpty());
    }

    void whatAKilledProgramLeftIsGoneAfterTheNextStart()
    {
        FileSettingsStore {path()}.setBoolean(u"autoOpenAds"_s, true);
        QVERIFY(QFile::copy(path(), path() + u".unfinished-a1B2c3"_s));
        QVERIFY(QFile::copy(path(), path() + u".backup"_s));

        const FileSettingsStore store(path());

        QCOMPARE(store.boolean(u"autoOpenAds"_s), true);
        QCOMPARE(entries().size(), 2);
        QVERIFY(!QFile::exists(path() + u".unfinished-a1B2c3"_s));
    }

    void aStoredValueIsThereInTheNextRun()
    {
        {
            FileSettingsStore store(path());
            store.setBoolean(u"autoOpenAds"_s, true);
            store.setBoolean(u"anonymousMode"_s, false);
        }

        const FileSettingsStore store(path());

        QCOMPARE(store.boolean(u"autoOpenAds"_s), true);
        QCOMPARE(store.boolean(u"anonymousMode"_s), false);
    }

    void aStoredValueIsInTheFileAtOnce()
    {
        FileSettingsStore store(path());

        store.setBoolean(u"autoOpenAds"_s, true);

        QCOMPARE(content(), "{\n  \"autoOpenAds\": true\n}\n");
        store.setBoolean(u"anonymousMode"_s, false);
        QCOMPARE(content(), "{\n  \"anonymousMode\": false,\n  \"autoOpenAds\": true\n}\n");
    }

    void aValueOfAnotherTypeCountsAsMissing()
    {
        write(R"({"a": "true", "b": 1, "c": null, "d": [true], "e": {"x": true}, "f": true, "g": 0})");

        const FileSettingsStore store(path());

        for (const auto& key : {u"a"_s, u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"g"_s})
            QCOMPARE(store.boolean(key), std::nullopt);
        QCOMPARE(store.boolean(u"f"_s), true);
        for (const auto& key : {u"b"_s, u"c"_s, u"d"_s, u"e"_s, u"f"_s, u"g"_s})
            QCOMPARE(store.string(key), std::nullopt);
        QCOMPARE(store.string(u"a"_s), u"true"_s);
    }

    void aBooleanTakesThePlaceOfAValueOfAnotherType()
    {
        write(R"({"anonymousMode": "no"})");
        FileSettingsStore store(path());

        store.setBoolean(u"anonymousMode"_s, true);

        QCOMPARE(store.boolean(u"anonymousMode"_s), true);
        QCOMPARE(FileSettingsStore(path()).boolean(u"anonymousMode"_s), true);
    }

    void unknownKeysOfEveryTypeSurviveAChange()
    {
        const Json::Object unknown {
            {u"nothing"_s, Json()},
            {u"whole"_s, Json(std::numeric_limits<qint64>::min())},
            {u"part"_s, Json(0.1)},
            {u"text"_s, Json(u"\u00e4 \" \\ \n \u0000"_s)},
            {u"list"_s, Json(Json::Array {Json(qint64 {1}), Json(Json::Array {}), Json(Json::Object {})})},
            {u"record"_s, Json(Json::Object {{u"deep"_s, Json(Json::Array {Json(false)})}})},
            {u""_s, Json(true)},
        };
        write(*Json(unknown).serialise());
        FileSettingsStore store(path());

        store.setBoolean(u"autoOpenAds"_s, true);

        auto expected = unknown;
        expected.insert_or_assign(u"autoOpenAds"_s, Json(true));
        QCOMPARE(Json::parse(content()), Result<Json>(Json(expected)));
    }

    void anUnreadableFileIsSetAsideAndNeverOverwritten_data()
    {
        QTest::addColumn<QByteArray>("text");

        QTest::newRow("empty") << QByteArray();
        QTest::newRow("cut off") << QByteArray(R"({"anonymousMode": fal)");
        QTest::newRow("an array") << QByteArray("[true]");
        QTest::newRow("a string") << QByteArray("\"{}\"");
        QTest::newRow("zero bytes") << QByteArray(64, '\0');
        QTest::newRow("not UTF-8") << QByteArray("{\"a\": \"\xff\"}");
        QTest::newRow("too large") << QByteArray(1 << 20, ' ') + "{}";
    }

    void anUnreadableFileIsSetAsideAndNeverOverwritten()
    {
        QFETCH(QByteArray, text);
        write(text);

        FileSettingsStore store(path());

        QCOMPARE(entries(), QStringList {u"settings.json"_s});
        QCOMPARE(content(), text);
        store.setBoolean(u"autoOpenAds"_s, true);
        QCOMPARE(entries(), QStringList({u"settings.json"_s, u"settings.json.unreadable-1"_s}));
        QCOMPARE(contentOf(path() + u".unreadable-1"_s), text);
        QCOMPARE(content(), "{\n  \"autoOpenAds\": true\n}\n");
    }

    void aSecondUnreadableFileGetsAnotherName()
    {
        write("first");
        FileSettingsStore {path()}.setBoolean(u"autoOpenAds"_s, true);
        write("second");

        FileSettingsStore {path()}.setBoolean(u"autoOpenAds"_s, true);

        QCOMPARE(contentOf(path() + u".unreadable-1"_s), "first");
        QCOMPARE(contentOf(path() + u".unreadable-2"_s), "second");
    }

    void aFileThatMayNotBeReadIsSetAside()
    {
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7777));
        write(R"({"anonymousMode": false})");
        QFile::setPermissions(path(), {});
        const OrdinaryUser user;

        FileSettingsStore store(path());
        store.setBoolean(u"autoOpenAds"_s, true);

        QCOMPARE(store.boolean(u"anonymousMode"_s), std::nullopt);
        QCOMPARE(entries(), QStringList({u"settings.json"_s, u"settings.json.unreadable-1"_s}));
    }

    void whatCannotBeSetAsideIsNotOverwrittenAndGoesAsideOnceItCan()
    {
        write("not JSON");
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555));
        std::optional<FileSettingsStore> store;
        {
            const OrdinaryUser user;
            store.emplace(path());
            store->setBoolean(u"autoOpenAds"_s, true);
        }
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));
        QCOMPARE(store->boolean(u"autoOpenAds"_s), true);
        QCOMPARE(content(), "not JSON");
        QCOMPARE(entries(), QStringList {u"settings.json"_s});

        store->setBoolean(u"anonymousMode"_s, false);

        QCOMPARE(contentOf(path() + u".unreadable-1"_s), "not JSON");
        QCOMPARE(content(), "{\n  \"anonymousMode\": false,\n  \"autoOpenAds\": true\n}\n");
    }

    void aFolderInItsPlaceIsLeftAlone()
    {
        QVERIFY(QDir().mkdir(path()));
        FileSettingsStore store(path());

        store.setBoolean(u"autoOpenAds"_s, true);

        QCOMPARE(store.boolean(u"autoOpenAds"_s), true);
        QVERIFY(QFileInfo(path()).isDir());
        QCOMPARE(entries(), QStringList {u"settings.json"_s});
    }

    void aLinkToAPipeIsLeftAloneAndDoesNotBlock()
    {
        const auto pipe = m_folder->path() + u"/pipe"_s;
        QCOMPARE(::mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);
        QVERIFY(QFile::link(pipe, path()));
        FileSettingsStore store(path());

        store.setBoolean(u"autoOpenAds"_s, true);

        QCOMPARE(store.boolean(u"autoOpenAds"_s), true);
        QVERIFY(QFileInfo(path()).isSymLink());
        QVERIFY(QFileInfo::exists(pipe) && !QFileInfo(pipe).isFile());
        QCOMPARE(entries(), QStringList({u"pipe"_s, u"settings.json"_s}));
    }

    void aLinkToItselfIsLeftAlone()
    {
        QVERIFY(QFile::link(path(), path()));
        FileSettingsStore store(path());

        store.setBoolean(u"autoOpenAds"_s, true);

        QCOMPARE(store.boolean(u"autoOpenAds"_s), true);
        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(entries(), QStringList {u"settings.json"_s});
    }

    void aFailedWriteKeepsTheValueAndIsTriedAgainAtTheNextChange()
    {
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555));
        FileSettingsStore store(path());
        {
            const OrdinaryUser user;
            store.setBoolean(u"anonymousMode"_s, false);
        }
        QCOMPARE(store.boolean(u"anonymousMode"_s), false);
        QVERIFY(entries().isEmpty());
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));

        store.setBoolean(u"autoOpenAds"_s, true);

        const FileSettingsStore next(path());
        QCOMPARE(next.boolean(u"anonymousMode"_s), false);
        QCOMPARE(next.boolean(u"autoOpenAds"_s), true);
    }

    void aLinkedFileStaysLinkedAlsoWhenItIsSetAside()
    {
        const auto kept = m_folder->path() + u"/dotfiles"_s;
        QVERIFY(QDir().mkdir(kept));
        QVERIFY(QFile::link(u"dotfiles/orvella.json"_s, path()));
        QFile file(kept + u"/orvella.json"_s);
        QVERIFY(file.open(QIODevice::WriteOnly));
        file.write("broken");
        file.close();
        FileSettingsStore store(path());

        store.setBoolean(u"autoOpenAds"_s, true);

        QVERIFY(QFileInfo(path()).isSymLink());
        QCOMPARE(QDir(kept).entryList(QDir::Files, QDir::Name),
            QStringList({u"orvella.json"_s, u"orvella.json.unreadable-1"_s}));
        QCOMPARE(FileSettingsStore(path()).boolean(u"autoOpenAds"_s), true);
    }

    void theFileAndItsFolderAreForTheUserAlone()
    {
        const auto folder = m_folder->path() + u"/config/orvella"_s;
        FileSettingsStore store(folder + u"/settings.json"_s);

        store.setBoolean(u"autoOpenAds"_s, true);

        constexpr auto kOwner = QFile::ReadOwner | QFile::WriteOwner | QFile::ReadUser | QFile::WriteUser;
        QCOMPARE(QFile::permissions(folder + u"/settings.json"_s), kOwner);
        QCOMPARE(QFile::permissions(folder), kOwner | QFile::ExeOwner | QFile::ExeUser);
    }

private:
    [[nodiscard]] QString path() const { return m_folder->path() + u"/settings.json"_s; }

    [[nodiscard]] QByteArray content() const { return contentOf(path()); }

    static QByteArray contentOf(const QString& path)
    {
        QFile file(path);
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(absent)");
    }

    void write(const QByteArray& text) const
    {
        QFile file(path());
        QVERIFY(file.open(QIODevice::WriteOnly));
        QCOMPARE(file.write(text), text.size());
    }

    [[nodiscard]] QStringList entries() const
    {
        return QDir(m_folder->path())
            .entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
    }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(FileSettingsStoreTest)

#include "FileSettingsStoreTest.moc"
