#include "platform/linux/secrets/SecretsFileFixture.h"

#include <QDir>

#include <sys/stat.h>
#include <unistd.h>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// What the store finds in the place of its file and does not use: it is kept, and nothing of it is believed.
class UnusableSecretsFileTest final : public QObject, private SecretsFileFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

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
};

QTEST_GUILESS_MAIN(UnusableSecretsFileTest)

#include "UnusableSecretsFileTest.moc"
