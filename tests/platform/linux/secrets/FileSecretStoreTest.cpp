#include "platform/linux/secrets/SecretsFileFixture.h"
#include "support/OrdinaryUser.h"

#include <QDir>
#include <QThreadPool>

#include <functional>
#include <latch>
#include <sys/stat.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

mode_t modeOf(const QString& path)
{
    struct stat found {};
    if (::lstat(QFile::encodeName(path).constData(), &found) != 0)
        qFatal("There is no such file.");
    return found.st_mode & ~static_cast<mode_t>(S_IFMT);
}

} // namespace

class FileSecretStoreTest final : public QObject, private SecretsFileFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

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
};

QTEST_GUILESS_MAIN(FileSecretStoreTest)

#include "FileSecretStoreTest.moc"
