#include "platform/linux/FileSecretStore.h"
#include "support/OrdinaryUser.h"
#include "support/Outcome.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>
#include <QThreadPool>

#include <functional>
#include <latch>
#include <memory>
#include <sys/stat.h>
#include <unistd.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kService = u"orvella.device-token"_s;
const auto kOlderService = u"quillon.device-token"_s;
const auto kAccount = u"default"_s;

mode_t modeOf(const QString& path)
{
    struct stat found {};
    if (::lstat(QFile::encodeName(path).constData(), &found) != 0)
        qFatal("There is no such file.");
    return found.st_mode & ~static_cast<mode_t>(S_IFMT);
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        qFatal("The file cannot be read.");
    return file.readAll();
}

void write(const QString& path, const QByteArray& content, mode_t mode = 0600)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size() || ::fchmod(file.handle(), mode) != 0)
        qFatal("The file cannot be written.");
}

} // namespace

class FileSecretStoreTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        home = std::make_unique<QTemporaryDir>();
        QVERIFY(home->isValid());
        folder = home->filePath(u"state/orvella"_s);
        path = folder + u"/secrets.json"_s;
        store = std::make_unique<FileSecretStore>(folder);
    }

    void cleanup()
    {
        store.reset();
        home.reset();
    }

    void whatWasAddedIsRead()
    {
        add(kService, "token-1");

        QCOMPARE(read(kService), "token-1");
        QVERIFY(!read(kOlderService));
    }

    void whatWasAddedIsReadByALaterRun()
    {
        add(kService, "token-1");
        store = std::make_unique<FileSecretStore>(folder);

        QCOMPARE(read(kService), "token-1");
    }

    void whatWasRemovedIsGoneAndTheRestStays()
    {
        add(kService, "token-1");
        add(kOlderService, "token-2");

        remove(kService);

        QVERIFY(!read(kService));
        QCOMPARE(read(kOlderService), "token-2");
        QVERIFY(!contentOf(path).contains(QByteArray("token-1").toBase64()));
    }

    void anItemReplacesTheOneBefore()
    {
        add(kService, "token-1");
        add(kService, "token-2");

        QCOMPARE(read(kService), "token-2");
    }

    void bytesOfAnyKindComeBackAsTheyWere_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("none") << QByteArray();
        QTest::newRow("beyond ASCII") << u"gr\u00fcn \U0001f511"_s.toUtf8();
        QTest::newRow("not UTF-8") << QByteArray("\xff\xfe\xc3");
        QTest::newRow("zeros and line ends") << QByteArray("a\0b\r\n\0", 6);
        QTest::newRow("many") << QByteArray(100'000, 'x');
    }

    void bytesOfAnyKindComeBackAsTheyWere()
    {
        QFETCH(const QByteArray, bytes);

        add(kService, bytes);

        QCOMPARE(read(kService), bytes);
    }

    void fileAndFolderAreTheOwnersAlone()
    {
        const auto before = ::umask(0);
        add(kService, "token-1");
        ::umask(before);

        QCOMPARE(modeOf(path), mode_t {0600});
        QCOMPARE(modeOf(folder), mode_t {0700});
        QCOMPARE(modeOf(home->filePath(u"state"_s)), mode_t {0700});
    }

    void aFolderThatOthersCanEnterIsClosed()
    {
        QVERIFY(QDir().mkpath(folder));
        QCOMPARE(::chmod(QFile::encodeName(folder).constData(), 0755), 0);

        add(kService, "token-1");

        QCOMPARE(modeOf(folder), mode_t {0700});
    }

    void nothingButTheFileIsLeftInTheFolder()
    {
        add(kService, "token-1");
        add(kService, "token-2");
        remove(kService);

        QCOMPARE(QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot), {u"secrets.json"_s});
    }

    void readingAndRemovingNothingMakeNoFolder()
    {
        QVERIFY(!read(kService));
        remove(kService);

        QVERIFY(!QFileInfo::exists(folder));
    }

    void aFileThatIsNotUnderstoodReadsAsEmptyAndIsKeptAside_data()
    {
        QTest::addColumn<QByteArray>("content");
        const auto whole = QByteArray(R"({"version":1,"items":[{"service":"s","account":"a","secret":"eA=="}]})");
        for (qsizetype size = 0; size < whole.size(); ++size)
            QTest::addRow("cut after %d", static_cast<int>(size)) << whole.first(size);
        QTest::newRow("not an object") << QByteArray("[]");
        QTest::newRow("a later version") << QByteArray(whole).replace("1", "2");
        QTest::newRow("no Base64") << QByteArray(whole).replace("eA==", "e!==");
        QTest::newRow("no account") << QByteArray(whole).replace("account", "accounts");
        QTest::newRow("too large") << whole + QByteArray(1 << 20, ' ');
    }

    void aFileThatIsNotUnderstoodReadsAsEmptyAndIsKeptAside()
    {
        QFETCH(const QByteArray, content);
        QVERIFY(QDir().mkpath(folder));
        write(path, content);

        QVERIFY(!read(kService));
        remove(kService);
        QCOMPARE(contentOf(path), content);
        add(kService, "token-1");

        QCOMPARE(read(kService), "token-1");
        QCOMPARE(contentOf(path + u".unreadable-1"_s), content);
    }

    void aFileThatOthersCanReadIsNotUsedAndIsKeptAside_data()
    {
        QTest::addColumn<unsigned>("mode");
        QTest::newRow("by the group") << 0640U;
        QTest::newRow("by everyone") << 0604U;
        QTest::newRow("written by the group") << 0620U;
    }

    void aFileThatOthersCanReadIsNotUsedAndIsKeptAside()
    {
        QFETCH(const unsigned, mode);
        add(kService, "token-1");
        const auto content = contentOf(path);
        QCOMPARE(::chmod(QFile::encodeName(path).constData(), mode), 0);

        QVERIFY(!read(kService));
        add(kService, "token-2");

        QCOMPARE(read(kService), "token-2");
        QCOMPARE(contentOf(path + u".unreadable-1"_s), content);
    }

    void aLinkIsNotFollowedAndWhatItLeadsToStays()
    {
        add(kService, "token-1");
        const auto elsewhere = home->filePath(u"elsewhere.json"_s);
        QVERIFY(QFile::rename(path, elsewhere));
        const auto content = contentOf(elsewhere);
        QVERIFY(QFile::link(elsewhere, path));

        QVERIFY(!read(kService));
        add(kService, "token-2");

        QCOMPARE(read(kService), "token-2");
        QVERIFY(!QFileInfo(path).isSymLink());
        QCOMPARE(contentOf(elsewhere), content);
        QCOMPARE(QFileInfo(path + u".unreadable-1"_s).symLinkTarget(), elsewhere);
    }

    void aFolderInTheFilesPlaceIsKeptAside()
    {
        QVERIFY(QDir().mkpath(path));

        QVERIFY(!read(kService));
        add(kService, "token-1");

        QCOMPARE(read(kService), "token-1");
        QVERIFY(QFileInfo(path + u".unreadable-1"_s).isDir());
    }

    void aPipeInTheFilesPlaceIsNotWaitedFor()
    {
        QVERIFY(QDir().mkpath(folder));
        QCOMPARE(::mkfifo(QFile::encodeName(path).constData(), 0600), 0);

        QVERIFY(!read(kService));
        add(kService, "token-1");

        QCOMPARE(read(kService), "token-1");
    }

    void aSecondUnreadableFileDoesNotReplaceTheFirst()
    {
        QVERIFY(QDir().mkpath(folder));
        write(path, "first");
        add(kService, "token-1");
        write(path, "second");
        add(kService, "token-2");

        QCOMPARE(contentOf(path + u".unreadable-1"_s), "first");
        QCOMPARE(contentOf(path + u".unreadable-2"_s), "second");
        QCOMPARE(read(kService), "token-2");
    }

    void whatAKilledProgramLeftGoesAtTheNextCall_data()
    {
        QTest::addColumn<std::function<void(FileSecretStoreTest*)>>("call");
        QTest::newRow("read") << std::function([](FileSecretStoreTest* test) { test->read(kService); });
        QTest::newRow("add") << std::function([](FileSecretStoreTest* test) { test->add(kService, "token-2"); });
        QTest::newRow("remove") << std::function([](FileSecretStoreTest* test) { test->remove(kService); });
    }

    void whatAKilledProgramLeftGoesAtTheNextCall()
    {
        QFETCH(const std::function<void(FileSecretStoreTest*)>, call);
        for (const auto hasFile : {true, false}) {
            QVERIFY(QDir().mkpath(folder));
            if (hasFile)
                add(kService, "token-1");
            write(path + u".unfinished-a1B2c3"_s, "token-0");
            write(path + u".backup"_s, "mine");

            call(this);

            QVERIFY(!QFile::exists(path + u".unfinished-a1B2c3"_s));
            QCOMPARE(contentOf(path + u".backup"_s), "mine");
            QFile::remove(path);
        }
    }

    void aFileOfSomebodyElseIsNotUsed()
    {
        add(kService, "token-1");
        QCOMPARE(::chmod(QFile::encodeName(home->path()).constData(), 0755), 0);
        if (::geteuid() != 0)
            QCOMPARE(read(kService), "token-1");
        else
            QCOMPARE(::chown(QFile::encodeName(path).constData(), 65534, 65534), 0);

        QCOMPARE(read(kService).has_value(), ::geteuid() != 0);
    }

    void whereNothingCanBeWrittenNothingChanges()
    {
        const OrdinaryUser user;
        FileSecretStore other(u"/proc/orvella"_s);

        const Outcome adding(other.add(kService, kAccount, Secret("token-1")));
        QTRY_VERIFY(adding.isThere());
        const Outcome reading(other.read(kService, kAccount, {}));
        QTRY_VERIFY(reading.isThere());

        QVERIFY(!*reading);
    }

    void aStoppedReadHasNoItem()
    {
        add(kService, "token-1");
        std::stop_source stop;
        const Outcome reading(store->read(kService, kAccount, stop.get_token()));
        stop.request_stop();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
    }

    void requestsThatHangDoNotHoldUpTheStore()
    {
        auto* const pool = QThreadPool::globalInstance();
        std::latch end(1);
        for (int number = 0; number < pool->maxThreadCount(); ++number)
            pool->start([&end] { end.wait(); });
        QTRY_COMPARE(pool->activeThreadCount(), pool->maxThreadCount());
        const auto letEnd = qScopeGuard([&] {
            end.count_down();
            pool->waitForDone();
        });

        add(kService, "token-1");

        QCOMPARE(read(kService), "token-1");
    }

    void aChangeThatHasBegunIsMadeWhenTheStoreGoesAway()
    {
        const Outcome adding(store->add(kService, kAccount, Secret("token-1")));

        store.reset();

        QTRY_VERIFY(adding.isThere());
        store = std::make_unique<FileSecretStore>(folder);
        QCOMPARE(read(kService), "token-1");
    }

    void changesAtTheSameTimeAreAllKept()
    {
        constexpr int kChanges = 50;
        std::vector<Outcome<void>> adding;
        adding.reserve(kChanges);
        for (int number = 0; number < kChanges; ++number)
            adding.emplace_back(store->add(QString::number(number), kAccount, Secret(QByteArray::number(number))));

        QTRY_VERIFY(std::ranges::all_of(adding, [](const auto& outcome) { return outcome.isThere(); }));
        for (int number = 0; number < kChanges; ++number)
            QCOMPARE(read(QString::number(number)), QByteArray::number(number));
    }

private:
    void add(const QString& service, const QByteArray& value)
    {
        const Outcome outcome(store->add(service, kAccount, Secret(value)));
        QTRY_VERIFY(outcome.isThere());
    }

    void remove(const QString& service)
    {
        const Outcome outcome(store->remove(service, kAccount));
        QTRY_VERIFY(outcome.isThere());
    }

    std::optional<QByteArray> read(const QString& service)
    {
        const Outcome outcome(store->read(service, kAccount, {}));
        if (!QTest::qWaitFor([&] { return outcome.isThere(); }))
            qFatal("The store does not answer.");
        return *outcome ? std::optional((*outcome)->reveal()) : std::nullopt;
    }

    std::unique_ptr<QTemporaryDir> home;
    QString folder;
    QString path;
    std::unique_ptr<FileSecretStore> store;
};

QTEST_GUILESS_MAIN(FileSecretStoreTest)

#include "FileSecretStoreTest.moc"
