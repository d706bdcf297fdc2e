#include "platform/linux/secrets/SecretFile.h"
#include "platform/linux/settings/FileSettingsStore.h"
#include "support/FaultyCalls.h"

#include <QDir>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <unistd.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

using Lasting = FaultyCalls::Lasting;

const auto kAccount = u"default"_s;

QStringList entriesOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

/// The stores on a disk that has no room or takes little at a time, and between two who write.
class StoresOnFullDiskTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aFileThatGrowsByAByteAtATimeIsWritten()
    {
        const QTemporaryDir folder;
        const auto path = folder.filePath(u"settings.json"_s);
        const SecretFile secrets(folder.path());
        {
            FaultyCalls faulty("write", 1, EINTR, Lasting::once);
            faulty.shortenWrites(1);
            FileSettingsStore {path}.setBoolean(u"anonymousMode"_s, false);
            QVERIFY(secrets.put(u"ours"_s, kAccount, Secret("token")));
        }

        QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), false);
        QCOMPARE(secrets.read(u"ours"_s, kAccount), Secret("token"));
    }

    void aDiskThatTakesNothingWithoutSayingWhyIsNotWaitedFor()
    {
        const QTemporaryDir folder;
        const auto path = folder.filePath(u"settings.json"_s);
        FileSettingsStore store(path);
        {
            FaultyCalls faulty("none", 1, EIO, Lasting::once);
            faulty.shortenWrites(0);
            store.setBoolean(u"anonymousMode"_s, false);
        }

        QVERIFY(entriesOf(folder.path()).isEmpty());
    }

    /// A file system of 64 kB, which is filled and emptied again under the running program.
    void aDiskThatIsReallyFullKeepsTheSettingsAndTakesThemWhenThereIsRoom()
    {
        const QTemporaryDir folder;
        const auto result = folder.filePath(u"result"_s);
        QVERIFY(QDir().mkdir(result));
        QVERIFY(QDir().mkdir(folder.filePath(u"disk"_s)));
        const auto script = uR"(mount -t tmpfs -o size=64k,mode=700 none disk || exit 77
            "$0" settings disk/settings.json anonymousMode=false \
                '!cat /dev/zero >disk/fill 2>/dev/null; test ! -s disk/nothing' autoOpenAds=true \
                '!cp disk/settings.json result/full; ls disk >result/entries; rm disk/fill' ageConfirmed=true \
                '!cp disk/settings.json result/later')"_s;
        QProcess writer;
        writer.setWorkingDirectory(folder.path());
        QStringList inOwnSpace {u"--mount"_s};
        if (::geteuid() != 0)
            inOwnSpace += {u"--user"_s, u"--map-root-user"_s};
        writer.start(
            u"unshare"_s, inOwnSpace + QStringList {u"sh"_s, u"-c"_s, script, QStringLiteral(ORVELLA_STORE_WRITER)});
        QVERIFY(writer.waitForFinished());
        if (isMountRefused(writer)) {
            fillDiskByInjection(folder.path());
            return;
        }

        QCOMPARE(writer.readAllStandardError(), QByteArray());
        QCOMPARE(writer.exitCode(), 0);
        QCOMPARE(FileSettingsStore(result + u"/full"_s).boolean(u"anonymousMode"_s), false);
        QVERIFY(!FileSettingsStore(result + u"/full"_s).contains(u"autoOpenAds"_s));
        QFile entries(result + u"/entries"_s);
        QVERIFY(entries.open(QIODevice::ReadOnly));
        QCOMPARE(entries.readAll(), "fill\nsettings.json\n");
        checkAll(result + u"/later"_s);
    }

    void twoProcessesAtATimeLeaveAWholeFile()
    {
        const QTemporaryDir folder;
        const auto path = folder.filePath(u"settings.json"_s);
        FileSettingsStore {path}.setBoolean(u"anonymousMode"_s, true);
        QStringList changes;
        for (int number = 0; number < 40; ++number)
            changes += number % 2 == 0 ? u"=true"_s : u"=false"_s;
        QProcess first;
        QProcess second;
        first.start(QStringLiteral(ORVELLA_STORE_WRITER),
            QStringList {u"settings"_s, path} + QStringList(changes).replaceInStrings(u"="_s, u"autoOpenAds="_s));
        second.start(QStringLiteral(ORVELLA_STORE_WRITER),
            QStringList {u"settings"_s, path} + QStringList(changes).replaceInStrings(u"="_s, u"ageConfirmed="_s));

        const auto isRunning = [](const QProcess& process) { return process.state() != QProcess::NotRunning; };
        for (; isRunning(first) || isRunning(second); QTest::qWait(1))
            QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), true);

        QCOMPARE(first.exitCode() + second.exitCode(), 0);
        QCOMPARE(FileSettingsStore(path).boolean(u"anonymousMode"_s), true);
        QVERIFY(
            FileSettingsStore(path).boolean(u"autoOpenAds"_s) && FileSettingsStore(path).boolean(u"ageConfirmed"_s));
        QCOMPARE(entriesOf(folder.path()), QStringList {u"settings.json"_s});
    }

private:
    static bool isMountRefused(const QProcess& writer)
    {
        constexpr int kUnshareFailed = 1;
        constexpr int kMountFailed = 77;
        return writer.exitCode() == kUnshareFailed || writer.exitCode() == kMountFailed;
    }

    /// Where nothing may be mounted, the system says of a disk with room that it is full.
    static void fillDiskByInjection(const QString& folder)
    {
        const auto path = folder + u"/settings.json"_s;
        FileSettingsStore {path}.setBoolean(u"anonymousMode"_s, false);
        QProcess writer;
        writer.setWorkingDirectory(folder);
        auto environment = QProcessEnvironment::systemEnvironment();
        environment.insert(u"ASAN_OPTIONS"_s, u"detect_leaks=0"_s);
        writer.setProcessEnvironment(environment);
        writer.start(u"strace"_s,
            {u"-qq"_s, u"-o"_s, u"/dev/null"_s, u"-e"_s, u"inject=fsync:error=ENOSPC:when=1"_s,
                QStringLiteral(ORVELLA_STORE_WRITER), u"settings"_s, path, u"autoOpenAds=true"_s,
                u"!cp settings.json result/full"_s, u"ageConfirmed=true"_s, u"!cp settings.json result/later"_s});
        QVERIFY2(writer.waitForStarted(), "strace is needed where nothing can be mounted.");
        QVERIFY(writer.waitForFinished());

        QCOMPARE(writer.exitCode(), 0);
        QVERIFY(!FileSettingsStore(folder + u"/result/full"_s).contains(u"autoOpenAds"_s));
        checkAll(folder + u"/result/later"_s);
    }

    static void checkAll(const QString& path)
    {
        const FileSettingsStore later(path);
        QCOMPARE(later.boolean(u"anonymousMode"_s), false);
        QCOMPARE(later.boolean(u"autoOpenAds"_s), true);
        QCOMPARE(later.boolean(u"ageConfirmed"_s), true);
    }
};

QTEST_GUILESS_MAIN(StoresOnFullDiskTest)

#include "StoresOnFullDiskTest.moc"
