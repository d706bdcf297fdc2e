#include "platform/linux/files/AtomicFile.h"
#include "platform/linux/files/Descriptor.h"
#include "support/OrdinaryUser.h"

#include <QDir>
#include <QScopeGuard>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <functional>
#include <sys/file.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What the program asked of the file system, in order.
QStringList& calls()
{
    static QStringList kept;
    return kept;
}

/// What happens whenever a file is on its way to the disk.
std::function<void()>& whileSyncing()
{
    static std::function<void()> kept;
    return kept;
}

QByteArray contentOf(const QString& path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(absent)");
}

bool write(const QString& path, const QByteArray& content)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(content) == content.size();
}

mode_t modeOf(const QString& path)
{
    struct stat found {};
    return ::stat(QFile::encodeName(path).constData(), &found) == 0 ? found.st_mode & 07777 : 0;
}

QStringList entriesOf(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot, QDir::Name);
}

} // namespace

// These stand before the C library's own, so that the order of the calls can be seen; they do the same.
extern "C" int fsync(int descriptor)
{
    struct stat found {};
    ::fstat(descriptor, &found);
    calls().append(S_ISDIR(found.st_mode) ? u"sync folder"_s : u"sync file"_s);
    if (whileSyncing())
        whileSyncing()();
    return static_cast<int>(::syscall(SYS_fsync, descriptor));
}

extern "C" int rename(const char* from, const char* to)
{
    calls().append(u"rename"_s);
    return static_cast<int>(::syscall(SYS_renameat2, AT_FDCWD, from, AT_FDCWD, to, 0));
}

class AtomicFileTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_folder.emplace();
        QVERIFY(m_folder->isValid());
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x7755));
    }

    void contentIsWrittenWithMissingFoldersForTheUserAlone()
    {
        const AtomicFile file(at(u"a/b/file"_s));

        QVERIFY(file.replace("new"));

        QCOMPARE(contentOf(at(u"a/b/file"_s)), "new");
        QCOMPARE(modeOf(at(u"a"_s)), 0700u);
        QCOMPARE(modeOf(at(u"a/b"_s)), 0700u);
        QCOMPARE(modeOf(at(u"a/b/file"_s)), 0600u);
    }

    void anOldFileIsReplacedAndNotWrittenInto()
    {
        QVERIFY(write(at(u"file"_s), "old content"));
        QFile reader(at(u"file"_s));
        QVERIFY(reader.open(QIODevice::ReadOnly));

        QVERIFY(AtomicFile(at(u"file"_s)).replace("new"));

        QCOMPARE(reader.readAll(), "old content");
        QCOMPARE(contentOf(at(u"file"_s)), "new");
        QCOMPARE(entriesOf(m_folder->path()), QStringList {u"file"_s});
    }

    void theContentIsOnTheDiskBeforeItTakesTheNameAndTheNameBeforeTheCallReturns()
    {
        const AtomicFile file(at(u"file"_s));
        calls().clear();

        QVERIFY(file.replace("new"));

        QCOMPARE(calls(), QStringList({u"sync file"_s, u"rename"_s, u"sync folder"_s}));
    }

    void aLinkStaysALinkAndItsTargetIsReplaced()
    {
        QVERIFY(QDir(m_folder->path()).mkdir(u"kept"_s));
        QVERIFY(write(at(u"kept/real"_s), "old"));
        QVERIFY(QFile::link(u"kept/real"_s, at(u"second"_s)));
        QVERIFY(QFile::link(at(u"second"_s), at(u"first"_s)));
        const AtomicFile file(at(u"first"_s));

        QVERIFY(file.replace("new"));

        QCOMPARE(file.target(), at(u"kept/real"_s));
        QVERIFY(QFileInfo(at(u"first"_s)).isSymLink());
        QVERIFY(QFileInfo(at(u"second"_s)).isSymLink());
        QCOMPARE(contentOf(at(u"kept/real"_s)), "new");
        QCOMPARE(entriesOf(at(u"kept"_s)), QStringList {u"real"_s});
    }

    void aLinkToNothingYetGetsItsTarget()
    {
        QVERIFY(QFile::link(u"kept/real"_s, at(u"link"_s)));

        QVERIFY(AtomicFile(at(u"link"_s)).replace("new"));

        QVERIFY(QFileInfo(at(u"link"_s)).isSymLink());
        QCOMPARE(contentOf(at(u"kept/real"_s)), "new");
    }

    void linksInACircleAreRefused()
    {
        QVERIFY(QFile::link(u"b"_s, at(u"a"_s)));
        QVERIFY(QFile::link(u"a"_s, at(u"b"_s)));
        const AtomicFile file(at(u"a"_s));

        const auto replaced = file.replace("new");

        QVERIFY(!file.target());
        QVERIFY(!replaced);
        QCOMPARE(replaced.error().kind, Failure::Kind::refused);
        QCOMPARE(entriesOf(m_folder->path()).size(), 2);
    }

    void aRefusalKeepsTheOldContentAndLeavesNothingBehind()
    {
        QVERIFY(write(at(u"file"_s), "old"));
        QFile::setPermissions(m_folder->path(), QFile::Permissions(0x5555));
        const OrdinaryUser user;

        const auto replaced = AtomicFile(at(u"file"_s)).replace("new");

        QVERIFY(!replaced);
        QCOMPARE(replaced.error().kind, Failure::Kind::refused);
        QVERIFY(!replaced.error().description.contains(m_folder->path()));
        QCOMPARE(contentOf(at(u"file"_s)), "old");
        QCOMPARE(entriesOf(m_folder->path()), QStringList {u"file"_s});
    }

    void aFolderInTheFilesPlaceIsRefusedAndLeavesNothingBehind()
    {
        QVERIFY(QDir(m_folder->path()).mkpath(u"file/inner"_s));

        QVERIFY(!AtomicFile(at(u"file"_s)).replace("new"));

        QCOMPARE(entriesOf(m_folder->path()), QStringList {u"file"_s});
        QCOMPARE(entriesOf(at(u"file"_s)), QStringList {u"inner"_s});
    }

    void aPipeInTheFilesPlaceIsRefusedAlsoThroughALink()
    {
        QCOMPARE(::mkfifo(QFile::encodeName(at(u"pipe"_s)).constData(), 0600), 0);
        QVERIFY(QFile::link(u"pipe"_s, at(u"link"_s)));

        QVERIFY(!AtomicFile(at(u"pipe"_s)).replace("new"));
        QVERIFY(!AtomicFile(at(u"link"_s)).replace("new"));

        QCOMPARE(entriesOf(m_folder->path()), QStringList({u"link"_s, u"pipe"_s}));
        QVERIFY(!QFileInfo(at(u"pipe"_s)).isFile());
    }

    void aFullDiskKeepsTheOldContent()
    {
        // A limit on the size of files stands for the full disk: the write fails half-way in the same manner.
        QVERIFY(write(at(u"file"_s), "old"));
        rlimit before {};
        QCOMPARE(::getrlimit(RLIMIT_FSIZE, &before), 0);
        const auto handler = std::signal(SIGXFSZ, SIG_IGN);
        const rlimit small {4, before.rlim_max};
        QCOMPARE(::setrlimit(RLIMIT_FSIZE, &small), 0);

        const auto replaced = AtomicFile(at(u"file"_s)).replace("much longer than four bytes");
        ::setrlimit(RLIMIT_FSIZE, &before);
        std::signal(SIGXFSZ, handler);

        QVERIFY(!replaced);
        QCOMPARE(contentOf(at(u"file"_s)), "old");
        QCOMPARE(entriesOf(m_folder->path()), QStringList {u"file"_s});
    }

    void whatAKilledProcessLeftBesideTheFileIsRemoved()
    {
        QVERIFY(write(at(u"file"_s), "old"));
        QVERIFY(write(at(u"file.unfinished-a1B2c3"_s), "half"));

        AtomicFile(at(u"file"_s)).removeLeftOvers();

        QCOMPARE(entriesOf(m_folder->path()), QStringList {u"file"_s});
        QVERIFY(write(at(u"file.unfinished-a1B2c3"_s), "half"));
        QVERIFY(AtomicFile(at(u"file"_s)).replace("new"));
        QCOMPARE(entriesOf(m_folder->path()), QStringList {u"file"_s});
    }

    void whatIsLeftIsRemovedBesideTheTargetOfALink()
    {
        QVERIFY(QDir(m_folder->path()).mkdir(u"kept"_s));
        QVERIFY(QFile::link(u"kept/real"_s, at(u"link"_s)));
        QVERIFY(write(at(u"kept/real.unfinished-a1B2c3"_s), "half"));

        AtomicFile(at(u"link"_s)).removeLeftOvers();

        QVERIFY(entriesOf(at(u"kept"_s)).isEmpty());
    }

    void whatAProcessIsWritingStays()
    {
        QVERIFY(write(at(u"file.unfinished-a1B2c3"_s), "half"));
        const Descriptor writer(::open(QFile::encodeName(at(u"file.unfinished-a1B2c3"_s)).constData(), O_WRONLY));
        QCOMPARE(::flock(writer.number(), LOCK_EX), 0);

        QVERIFY(AtomicFile(at(u"file"_s)).replace("new"));

        QCOMPARE(entriesOf(m_folder->path()), QStringList({u"file"_s, u"file.unfinished-a1B2c3"_s}));
    }

    void aFileIsLockedWhileItIsWritten()
    {
        const AtomicFile file(at(u"file"_s));
        whileSyncing() = [&] { file.removeLeftOvers(); };
        const auto forget = qScopeGuard([] { whileSyncing() = {}; });

        QVERIFY(file.replace("new"));

        QCOMPARE(contentOf(at(u"file"_s)), "new");
    }

    void whatOthersKeepBesideTheFileStays()
    {
        const QStringList names {u"file.backup"_s, u"file.unfinished-"_s, u"file.unfinished-a1B2c"_s,
            u"file.unfinished-a1B2c3d"_s, u"file.unreadable-1"_s, u"file2.unfinished-a1B2c3"_s};
        for (const auto& name : names)
            QVERIFY(write(at(name), "mine"));
        QVERIFY(QDir(m_folder->path()).mkdir(u"file.unfinished-folder"_s));
        QVERIFY(QFile::link(u"file.backup"_s, at(u"file.unfinished-a-link"_s)));
        QVERIFY(QFile::link(u"file.backup"_s, at(u"file.unfinished-linked"_s)));
        QCOMPARE(::mkfifo(QFile::encodeName(at(u"file.unfinished-a-pipe"_s)).constData(), 0600), 0);
        const auto before = entriesOf(m_folder->path());

        AtomicFile(at(u"file"_s)).removeLeftOvers();

        QCOMPARE(entriesOf(m_folder->path()), before);
    }

    void aDescriptorThatClosesItselfKeepsTheErrorOfTheCallBefore()
    {
        constexpr int kNobodys = 1 << 20;
        {
            // Its close fails with EBADF.
            const Descriptor file(kNobodys);
            errno = EIO;
        }
        QCOMPARE(errno, EIO);
    }

private:
    [[nodiscard]] QString at(const QString& name) const { return m_folder->path() + u'/' + name; }

    std::optional<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(AtomicFileTest)

#include "AtomicFileTest.moc"
