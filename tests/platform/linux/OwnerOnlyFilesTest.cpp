#include "platform/linux/secrets/FileSecretStore.h"
#include "platform/linux/secrets/KeyringMark.h"
#include "platform/linux/settings/FileSettingsStore.h"
#include "support/Outcome.h"

#include <QDirIterator>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kService = u"orvella.device-token"_s;
const auto kAccount = u"default"_s;

void write(const QString& path, const QByteArray& text, mode_t mode)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(text) != text.size() || ::fchmod(file.handle(), mode) != 0)
        qFatal("The file cannot be written.");
}

} // namespace

/// Everything that the stores leave on the disk, whatever the viewer's umask.
class OwnerOnlyFilesTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void nothingIsForOthers_data()
    {
        QTest::addColumn<unsigned>("umask");
        QTest::newRow("none") << 0U;
        QTest::newRow("usual") << 022U;
        QTest::newRow("of groups") << 002U;
        QTest::newRow("strict") << 077U;
    }

    void nothingIsForOthers()
    {
        QFETCH(const unsigned, umask);
        const QTemporaryDir home;
        const auto before = ::umask(umask);

        const auto settings = home.filePath(u"config/orvella/settings.json"_s);
        FileSettingsStore {settings}.setBoolean(u"anonymousMode"_s, false);
        write(settings, "not JSON", 0666);
        FileSettingsStore {settings}.setBoolean(u"anonymousMode"_s, false);

        const auto state = home.filePath(u"state/orvella"_s);
        FileSecretStore secrets(state);
        await(secrets.add(kService, kAccount, Secret("token-1")));
        QCOMPARE(::chmod(QFile::encodeName(state + u"/secrets.json"_s).constData(), 0666), 0);
        await(secrets.add(kService, kAccount, Secret("token-2")));
        KeyringMark mark(state);
        const Outcome setting(mark.set(kService, kAccount));
        QTRY_VERIFY(setting.isThere());
        QVERIFY(*setting);
        ::umask(before);

        QStringList files;
        QDirIterator found(
            home.path(), QDir::AllEntries | QDir::Hidden | QDir::NoDotAndDotDot, QDirIterator::Subdirectories);
        while (found.hasNext()) {
            const auto path = found.next();
            struct stat entry {};
            QCOMPARE(::lstat(QFile::encodeName(path).constData(), &entry), 0);
            QVERIFY2((entry.st_mode & 07777) == (S_ISDIR(entry.st_mode) ? 0700U : 0600U), qPrintable(path));
            if (S_ISREG(entry.st_mode))
                files += found.fileName();
        }
        files.sort();
        QCOMPARE(files,
            QStringList({u"orvella.device-token-default.in-keyring"_s, u"secrets.json"_s,
                u"secrets.json.unreadable-1"_s, u"settings.json"_s, u"settings.json.unreadable-1"_s}));
    }

private:
    static void await(QCoro::Task<> task)
    {
        const Outcome outcome(std::move(task));
        QTRY_VERIFY(outcome.isThere());
    }
};

QTEST_GUILESS_MAIN(OwnerOnlyFilesTest)

#include "OwnerOnlyFilesTest.moc"
