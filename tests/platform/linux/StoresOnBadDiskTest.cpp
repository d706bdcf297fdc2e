#include "platform/linux/instance/InstanceLock.h"
#include "platform/linux/secrets/SecretFile.h"
#include "platform/linux/settings/FileSettingsStore.h"
#include "support/FaultyCalls.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <cstring>
#include <functional>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

using Lasting = FaultyCalls::Lasting;

const auto kAccount = u"default"_s;

/// What fails, one row of a test.
struct Fault {
    QByteArray call;
    int error = 0;
    Lasting lasting = Lasting::once;

    /// A signal came in between, so that nothing is amiss with the disk.
    [[nodiscard]] bool isSignal() const { return error == EINTR; }
};

/// One round of a test, in which the fault is met once at the most.
class Round final {
public:
    Round(const Fault& fault, int number)
        : m_fault(fault)
        , m_number(number)
    {
    }

    /// Does something on the bad disk.
    void onBadDisk(const std::function<void()>& action)
    {
        const FaultyCalls faulty(m_fault.call, m_number, m_fault.error, m_fault.lasting);
        action();
        m_hasFailed = faulty.hasFailed();
    }

    [[nodiscard]] bool hasFailed() const { return m_hasFailed; }

    /// Whether what was done has to have come through.
    [[nodiscard]] bool isHarmless() const { return m_fault.isSignal() || !m_hasFailed; }

private:
    const Fault& m_fault;
    int m_number;
    bool m_hasFailed = false;
};

/// Plays rounds with the fault of this row at each occurrence of its call, until one meets none.
void atEveryOccurrence(const std::function<void(Round&)>& play)
{
    QFETCH(const Fault, fault);
    for (int number = 1;; ++number) {
        Round round(fault, number);
        play(round);
        if (QTest::currentTestFailed())
            return;
        if (round.hasFailed())
            continue;
        QVERIFY2(number > 1, "The call is not made.");
        return;
    }
}

/// Each of these calls with each error that a disk or a signal gives it. A test names the calls that it comes to, all
/// of them, and sees to it that they are met.
void addFaults(const QByteArrayList& calls)
{
    QTest::addColumn<Fault>("fault");
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
            QTest::addRow("%s: %s once", call, name) << Fault {call, error, Lasting::once};
            if (error != EINTR)
                QTest::addRow("%s: %s from then on", call, name) << Fault {call, error, Lasting::everAfter};
        }
    }
}

/// Besides, a file that the program may not open.
void addFaultsOfReading(const QByteArrayList& calls)
{
    addFaults(calls);
    QTest::newRow("open: EACCES once") << Fault {"open", EACCES, Lasting::once};
    QTest::newRow("open: EACCES from then on") << Fault {"open", EACCES, Lasting::everAfter};
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
        atEveryOccurrence([](Round& round) {
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"orvella/settings.json"_s);
            FileSettingsStore {path}.setBoolean(u"anonymousMode"_s, false);
            FileSettingsStore store(path);
            round.onBadDisk([&] { store.setBoolean(u"autoOpenAds"_s, true); });

            QCOMPARE(store.boolean(u"autoOpenAds"_s), true);
            QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), false);
            if (round.isHarmless())
                QCOMPARE(FileSettingsStore(path).boolean(u"autoOpenAds"_s), true);
            store.setBoolean(u"showLaunchWindowAtStartup"_s, false);
            const FileSettingsStore next(path);
            QCOMPARE(next.boolean(u"anonymousMode"_s), false);
            QCOMPARE(next.boolean(u"autoOpenAds"_s), true);
            QCOMPARE(next.boolean(u"showLaunchWindowAtStartup"_s), false);
            QVERIFY(entriesOf(folder.filePath(u"orvella"_s)).filter(u"settings.json.unreadable"_s).size() <= 1);
        });
    }

    void anonymousModeIsNotTurnedOffByAFileThatCannotBeRead_data() { aChangeIsMadeOrNotAndTheNextOneIs_data(); }

    void anonymousModeIsNotTurnedOffByAFileThatCannotBeRead()
    {
        atEveryOccurrence([](Round& round) {
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"settings.json"_s);
            FileSettingsStore {path}.setBoolean(u"anonymousMode"_s, true);
            std::optional<FileSettingsStore> store;
            std::optional<bool> found;
            round.onBadDisk([&] {
                store.emplace(path);
                found = store->boolean(u"anonymousMode"_s);
                store->setBoolean(u"autoOpenAds"_s, true);
            });
            store->setBoolean(u"ageConfirmed"_s, true);

            QVERIFY(found != false);
            const FileSettingsStore next(path);
            const FileSettingsStore aside(path + u".unreadable-1"_s);
            const auto kept = QFile::exists(path + u".unreadable-1"_s) ? aside.boolean(u"anonymousMode"_s)
                                                                       : next.boolean(u"anonymousMode"_s);
            QCOMPARE(kept, true);
            QVERIFY(next.boolean(u"anonymousMode"_s) != false);
            QCOMPARE(next.boolean(u"autoOpenAds"_s), true);
            QCOMPARE(next.boolean(u"ageConfirmed"_s), true);
        });
    }

    void anUnreadableFileIsKeptWhateverFails_data()
    {
        addFaultsOfReading(
            {"open", "stat", "read", "renameat2", "chmod", "mkostemp", "flock", "write", "fsync", "rename"});
    }

    void anUnreadableFileIsKeptWhateverFails()
    {
        atEveryOccurrence([](Round& round) {
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"settings.json"_s);
            QFile file(path);
            QVERIFY(file.open(QIODevice::WriteOnly) && file.write("mine") == 4);
            file.close();
            FileSettingsStore store(path);
            round.onBadDisk([&] { store.setBoolean(u"autoOpenAds"_s, true); });
            store.setBoolean(u"ageConfirmed"_s, true);

            QFile aside(path + u".unreadable-1"_s);
            QVERIFY(aside.open(QIODevice::ReadOnly));
            QCOMPARE(aside.readAll(), "mine");
            QCOMPARE(FileSettingsStore(path).boolean(u"autoOpenAds"_s), true);
            QCOMPARE(entriesOf(folder.path()).size(), 2);
        });
    }

    void aSecretIsWrittenOrNotAndTheOthersStay_data()
    {
        addFaults({"open", "fchmod", "flock", "read", "mkostemp", "write", "fsync", "rename"});
    }

    void aSecretIsWrittenOrNotAndTheOthersStay()
    {
        atEveryOccurrence([](Round& round) {
            const QTemporaryDir folder;
            const SecretFile secrets(folder.filePath(u"state"_s));
            QVERIFY(secrets.put(u"other"_s, kAccount, Secret("other-token")));
            QVERIFY(secrets.put(u"ours"_s, kAccount, Secret("old-token")));
            // So that each of its calls is made.
            QFile::setPermissions(folder.filePath(u"state"_s), QFile::Permissions(0x7755));
            auto isDone = false;
            round.onBadDisk([&] { isDone = secrets.put(u"ours"_s, kAccount, Secret("new-token")); });

            QCOMPARE(secrets.read(u"other"_s, kAccount), Secret("other-token"));
            const auto ours = secrets.read(u"ours"_s, kAccount);
            QVERIFY(ours == Secret("new-token") || (!isDone && ours == Secret("old-token")));
            QVERIFY(isDone || !round.isHarmless());
            QVERIFY(secrets.put(u"ours"_s, kAccount, Secret("newer-token")));
            QCOMPARE(secrets.read(u"ours"_s, kAccount), Secret("newer-token"));
            QCOMPARE(entriesOf(folder.filePath(u"state"_s)), QStringList {u"secrets.json"_s});
        });
    }

    void aFirstChangeMakesItsFolderOrNotAndTheNextOneDoes_data()
    {
        addFaults({"stat", "mkdir", "open", "mkostemp", "flock", "write", "fsync", "rename"});
    }

    void aFirstChangeMakesItsFolderOrNotAndTheNextOneDoes()
    {
        atEveryOccurrence([](Round& round) {
            const QTemporaryDir folder;
            const auto path = folder.filePath(u"config/orvella/settings.json"_s);
            FileSettingsStore store(path);
            round.onBadDisk([&] { store.setBoolean(u"anonymousMode"_s, false); });

            if (round.isHarmless())
                QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), false);
            store.setBoolean(u"autoOpenAds"_s, true);
            QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), false);
            QCOMPARE(FileSettingsStore(path).boolean(u"autoOpenAds"_s), true);
            QCOMPARE(entriesOf(folder.filePath(u"config/orvella"_s)), QStringList {u"settings.json"_s});
        });
    }

    void aFirstSecretMakesItsFolderOrNotAndTheNextOneDoes_data()
    {
        addFaults({"mkdir", "open", "flock", "mkostemp", "write", "fsync", "rename"});
    }

    void aFirstSecretMakesItsFolderOrNotAndTheNextOneDoes()
    {
        atEveryOccurrence([](Round& round) {
            const QTemporaryDir folder;
            const SecretFile secrets(folder.filePath(u"state/orvella"_s));
            auto isDone = false;
            round.onBadDisk([&] { isDone = secrets.put(u"ours"_s, kAccount, Secret("token")); });

            QVERIFY(isDone || !round.isHarmless());
            QVERIFY(!isDone || secrets.read(u"ours"_s, kAccount) == Secret("token"));
            QVERIFY(secrets.put(u"ours"_s, kAccount, Secret("newer-token")));
            QCOMPARE(secrets.read(u"ours"_s, kAccount), Secret("newer-token"));
            QCOMPARE(entriesOf(folder.filePath(u"state/orvella"_s)), QStringList {u"secrets.json"_s});
        });
    }

    void aSignalInBetweenDoesNotMakeASecondProgramTheFirst_data() { addFaults({"open", "flock"}); }

    void aSignalInBetweenDoesNotMakeASecondProgramTheFirst()
    {
        QFETCH(const Fault, fault);

        const QTemporaryDir folder;
        InstanceLock first(folder.filePath(u"lock"_s));
        QVERIFY(first.take());
        InstanceLock second(folder.filePath(u"lock"_s));
        auto isFirst = false;
        {
            const FaultyCalls faulty(fault.call, 1, fault.error, fault.lasting);
            isFirst = second.take();
            QVERIFY(faulty.hasFailed());
        }

        // Where the lock cannot be had at all, nothing tells the two apart.
        QCOMPARE(isFirst, !fault.isSignal());
    }
};

QTEST_GUILESS_MAIN(StoresOnBadDiskTest)

#include "StoresOnBadDiskTest.moc"
