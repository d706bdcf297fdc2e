#include "platform/linux/FileSettingsStore.h"
#include "platform/linux/InstanceLock.h"
#include "platform/linux/SecretFile.h"
#include "support/FaultyCalls.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <cstring>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

using Lasting = FaultyCalls::Lasting;

const auto kAccount = u"default"_s;

/// The number after a first round that met no fault and was the last.
constexpr int kWithoutAFault = 2;

/// Each of these calls with each error that a disk or a signal gives it. A test names the calls that it comes to, all
/// of them, and sees to it that they are met.
void addFaults(const QByteArrayList& calls)
{
    QTest::addColumn<QByteArray>("call");
    QTest::addColumn<int>("error");
    QTest::addColumn<Lasting>("lasting");
    const std::vector<std::pair<const char*, std::vector<int>>> faults {
        {"open", {EIO, EMFILE, EINTR}},
        {"stat", {EIO, EACCES}},
        {"read", {EIO, EINTR}},
        {"mkostemp", {ENOSPC, EROFS, EINTR}},
        {"write", {ENOSPC, EIO, EDQUOT, EINTR}},
        {"fsync", {ENOSPC, EIO, EINTR, EINVAL}},
        {"rename", {ENOSPC, EIO}},
        {"renameat2", {EIO, EINVAL}},
        {"mkdir", {ENOSPC}},
        {"chmod", {EPERM}},
        {"fchmod", {EPERM}},
        {"flock", {EINTR, ENOLCK}},
    };
    for (const auto& [call, errors] : faults) {
        for (const auto error : calls.contains(call) ? errors : std::vector<int>()) {
            const auto* const name = ::strerrorname_np(error);
            QTest::addRow("%s: %s once", call, name) << QByteArray(call) << error << Lasting::once;
            if (error != EINTR)
                QTest::addRow("%s: %s from then on", call, name) << QByteArray(call) << error << Lasting::everAfter;
        }
    }
}

/// Besides, a file that the program may not open.
void addFaultsOfReading(const QByteArrayList& calls)
{
    addFaults(calls);
    QTest::newRow("open: EACCES once") << QByteArray("open") << EACCES << Lasting::once;
    QTest::newRow("open: EACCES from then on") << QByteArray("open") << EACCES << Lasting::everAfter;
}

QStringList entriesOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

/// The stores on a disk where one call or another fails, with nothing in place yet and with something there.
class StoresOnBadDiskTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aChangeIsMadeOrNotAndTheNextOneIs_data()
    {
        addFaultsOfReading({"open", "stat", "read", "mkostemp", "flock", "write", "fsync", "rename"});
    }

    void aChangeIsMadeOrNotAndTheNextOneIs()
    {
        QFETCH(const QByteArray, call);
        QFETCH(const int, error);
        QFETCH(const Lasting, lasting);

        auto hasFailed = true;
        auto number = 1;
        for (; hasFailed; ++number) {
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"orvella/settings.json"_s);
            FileSettingsStore {path}.setBoolean(u"anonymousMode"_s, false);
            FileSettingsStore store(path);
            {
                const FaultyCalls faulty(call, number, error, lasting);
                store.setBoolean(u"autoOpenAds"_s, true);
                hasFailed = faulty.hasFailed();
            }

            QCOMPARE(store.boolean(u"autoOpenAds"_s), true);
            QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), false);
            if (error == EINTR || !hasFailed)
                QCOMPARE(FileSettingsStore(path).boolean(u"autoOpenAds"_s), true);
            store.setBoolean(u"showLaunchWindowAtStartup"_s, false);
            const FileSettingsStore next(path);
            QCOMPARE(next.boolean(u"anonymousMode"_s), false);
            QCOMPARE(next.boolean(u"autoOpenAds"_s), true);
            QCOMPARE(next.boolean(u"showLaunchWindowAtStartup"_s), false);
            QVERIFY(entriesOf(folder.filePath(u"orvella"_s)).filter(u"settings.json.unreadable"_s).size() <= 1);
        }
        QVERIFY(number > kWithoutAFault);
    }

    void anonymousModeIsNotTurnedOffByAFileThatCannotBeRead_data() { aChangeIsMadeOrNotAndTheNextOneIs_data(); }

    void anonymousModeIsNotTurnedOffByAFileThatCannotBeRead()
    {
        QFETCH(const QByteArray, call);
        QFETCH(const int, error);
        QFETCH(const Lasting, lasting);

        auto hasFailed = true;
        auto number = 1;
        for (; hasFailed; ++number) {
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"settings.json"_s);
            FileSettingsStore {path}.setBoolean(u"anonymousMode"_s, true);
            std::optional<FileSettingsStore> store;
            {
                const FaultyCalls faulty(call, number, error, lasting);
                store.emplace(path);
                QVERIFY(store->boolean(u"anonymousMode"_s) != false);
                store->setBoolean(u"autoOpenAds"_s, true);
                hasFailed = faulty.hasFailed();
            }
            store->setBoolean(u"ageConfirmed"_s, true);

            const FileSettingsStore next(path);
            const FileSettingsStore aside(path + u".unreadable-1"_s);
            const auto kept = QFile::exists(path + u".unreadable-1"_s) ? aside.boolean(u"anonymousMode"_s)
                                                                       : next.boolean(u"anonymousMode"_s);
            QCOMPARE(kept, true);
            QVERIFY(next.boolean(u"anonymousMode"_s) != false);
            QCOMPARE(next.boolean(u"autoOpenAds"_s), true);
            QCOMPARE(next.boolean(u"ageConfirmed"_s), true);
        }
        QVERIFY(number > kWithoutAFault);
    }

    void anUnreadableFileIsKeptWhateverFails_data()
    {
        addFaultsOfReading(
            {"open", "stat", "read", "renameat2", "chmod", "mkostemp", "flock", "write", "fsync", "rename"});
    }

    void anUnreadableFileIsKeptWhateverFails()
    {
        QFETCH(const QByteArray, call);
        QFETCH(const int, error);
        QFETCH(const Lasting, lasting);

        auto hasFailed = true;
        auto number = 1;
        for (; hasFailed; ++number) {
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"settings.json"_s);
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("mine") == 4);
            file.close();
            FileSettingsStore store(path);
            {
                const FaultyCalls faulty(call, number, error, lasting);
                store.setBoolean(u"autoOpenAds"_s, true);
                hasFailed = faulty.hasFailed();
            }
            store.setBoolean(u"ageConfirmed"_s, true);

            QFile aside(path + u".unreadable-1"_s);
            QVERIFY(aside.open(QIODevice::ReadOnly));
            QCOMPARE(aside.readAll(), "mine");
            QCOMPARE(FileSettingsStore(path).boolean(u"autoOpenAds"_s), true);
            QCOMPARE(entriesOf(folder.path()).size(), 2);
        }
        QVERIFY(number > kWithoutAFault);
    }

    void aSecretIsWrittenOrNotAndTheOthersStay_data()
    {
        addFaults({"open", "fchmod", "flock", "read", "mkostemp", "write", "fsync", "rename"});
    }

    void aSecretIsWrittenOrNotAndTheOthersStay()
    {
        QFETCH(const QByteArray, call);
        QFETCH(const int, error);
        QFETCH(const Lasting, lasting);

        auto hasFailed = true;
        auto number = 1;
        for (; hasFailed; ++number) {
            const QTemporaryDir folder;
            const SecretFile secrets(folder.filePath(u"state"_s));
            QVERIFY(secrets.put(u"other"_s, kAccount, Secret("other-token")));
            QVERIFY(secrets.put(u"ours"_s, kAccount, Secret("old-token")));
            // So that each of its calls is made.
            QFile::setPermissions(folder.filePath(u"state"_s), QFile::Permissions(0x7755));
            auto isDone = false;
            {
                const FaultyCalls faulty(call, number, error, lasting);
                isDone = secrets.put(u"ours"_s, kAccount, Secret("new-token"));
                hasFailed = faulty.hasFailed();
            }

            QCOMPARE(secrets.read(u"other"_s, kAccount), Secret("other-token"));
            const auto ours = secrets.read(u"ours"_s, kAccount);
            QVERIFY(ours == Secret("new-token") || (!isDone && ours == Secret("old-token")));
            QVERIFY(isDone || (hasFailed && error != EINTR));
            QVERIFY(secrets.put(u"ours"_s, kAccount, Secret("newer-token")));
            QCOMPARE(secrets.read(u"ours"_s, kAccount), Secret("newer-token"));
            QCOMPARE(entriesOf(folder.filePath(u"state"_s)), QStringList {u"secrets.json"_s});
        }
        QVERIFY(number > kWithoutAFault);
    }

    void aFirstChangeMakesItsFolderOrNotAndTheNextOneDoes_data()
    {
        addFaults({"stat", "mkdir", "open", "mkostemp", "flock", "write", "fsync", "rename"});
    }

    void aFirstChangeMakesItsFolderOrNotAndTheNextOneDoes()
    {
        QFETCH(const QByteArray, call);
        QFETCH(const int, error);
        QFETCH(const Lasting, lasting);

        auto hasFailed = true;
        auto number = 1;
        for (; hasFailed; ++number) {
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"config/orvella/settings.json"_s);
            FileSettingsStore store(path);
            {
                const FaultyCalls faulty(call, number, error, lasting);
                store.setBoolean(u"anonymousMode"_s, false);
                hasFailed = faulty.hasFailed();
            }

            if (error == EINTR || !hasFailed)
                QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), false);
            store.setBoolean(u"autoOpenAds"_s, true);
            QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), false);
            QCOMPARE(FileSettingsStore(path).boolean(u"autoOpenAds"_s), true);
            QCOMPARE(entriesOf(folder.filePath(u"config/orvella"_s)), QStringList {u"settings.json"_s});
        }
        QVERIFY(number > kWithoutAFault);
    }

    void aFirstSecretMakesItsFolderOrNotAndTheNextOneDoes_data()
    {
        addFaults({"mkdir", "open", "flock", "mkostemp", "write", "fsync", "rename"});
    }

    void aFirstSecretMakesItsFolderOrNotAndTheNextOneDoes()
    {
        QFETCH(const QByteArray, call);
        QFETCH(const int, error);
        QFETCH(const Lasting, lasting);

        auto hasFailed = true;
        auto number = 1;
        for (; hasFailed; ++number) {
            const QTemporaryDir folder;
            const SecretFile secrets(folder.filePath(u"state/orvella"_s));
            auto isDone = false;
            {
                const FaultyCalls faulty(call, number, error, lasting);
                isDone = secrets.put(u"ours"_s, kAccount, Secret("token"));
                hasFailed = faulty.hasFailed();
            }

            QVERIFY(isDone || (hasFailed && error != EINTR));
            QVERIFY(!isDone || secrets.read(u"ours"_s, kAccount) == Secret("token"));
            QVERIFY(secrets.put(u"ours"_s, kAccount, Secret("newer-token")));
            QCOMPARE(secrets.read(u"ours"_s, kAccount), Secret("newer-token"));
            QCOMPARE(entriesOf(folder.filePath(u"state/orvella"_s)), QStringList {u"secrets.json"_s});
        }
        QVERIFY(number > kWithoutAFault);
    }

    void aSignalInBetweenDoesNotMakeASecondProgramTheFirst_data() { addFaults({"open", "flock"}); }

    void aSignalInBetweenDoesNotMakeASecondProgramTheFirst()
    {
        QFETCH(const QByteArray, call);
        QFETCH(const int, error);
        QFETCH(const Lasting, lasting);

        const QTemporaryDir folder;
        InstanceLock first(folder.filePath(u"lock"_s));
        QVERIFY(first.take());
        InstanceLock second(folder.filePath(u"lock"_s));
        auto isFirst = false;
        {
            const FaultyCalls faulty(call, 1, error, lasting);
            isFirst = second.take();
            QVERIFY(faulty.hasFailed());
        }

        // Where the lock cannot be had at all, nothing tells the two apart.
        QCOMPARE(isFirst, error != EINTR);
    }
};

QTEST_GUILESS_MAIN(StoresOnBadDiskTest)

#include "StoresOnBadDiskTest.moc"
