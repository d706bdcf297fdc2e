#include "platform/linux/ProfileFolder.h"

#include <QDir>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class ProfileFolderTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(m_folder.isValid());
        m_root = QFileInfo(m_folder.path()).canonicalFilePath();
        QVERIFY(QDir(m_root).mkpath(u"there/inside"_s));
        QVERIFY(QFile::link(m_root + u"/there"_s, m_root + u"/link"_s));
        QVERIFY(QDir::setCurrent(m_root));
    }

    void aFolderHasOnePathHoweverItIsWritten_data()
    {
        QTest::addColumn<QString>("given");
        QTest::addColumn<QString>("expected");

        QTest::newRow("absolute") << m_root + u"/there"_s << u"/there"_s;
        QTest::newRow("relative") << u"there"_s << u"/there"_s;
        QTest::newRow("with a slash at its end") << u"there/"_s << u"/there"_s;
        QTest::newRow("with double slashes") << u"there//inside//"_s << u"/there/inside"_s;
        QTest::newRow("here") << u"."_s << QString();
        QTest::newRow("up and down") << u"there/inside/../../there"_s << u"/there"_s;
        QTest::newRow("through a link") << u"link"_s << u"/there"_s;
        QTest::newRow("below a link") << u"link/inside"_s << u"/there/inside"_s;
        QTest::newRow("not there yet") << u"new"_s << u"/new"_s;
        QTest::newRow("not there yet, with a slash") << u"new/"_s << u"/new"_s;
        QTest::newRow("deep, not there yet") << u"there/new/deep"_s << u"/there/new/deep"_s;
        QTest::newRow("below a link, not there yet") << u"link/new"_s << u"/there/new"_s;
    }

    void aFolderHasOnePathHoweverItIsWritten()
    {
        QFETCH(const QString, given);
        QFETCH(const QString, expected);

        QCOMPARE(profileFolder(given), m_root + expected);
    }

    void theRootIsAFolder()
    {
        QCOMPARE(profileFolder(u"/"_s), u"/"_s);
        QCOMPARE(profileFolder(u"/there-is-no-such-folder"_s), u"/there-is-no-such-folder"_s);
    }

private:
    QTemporaryDir m_folder;
    QString m_root;
};

QTEST_GUILESS_MAIN(ProfileFolderTest)

#include "ProfileFolderTest.moc"
