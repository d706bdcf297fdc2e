#include "platform/linux/environment/LastingPath.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class LastingPathTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void initTestCase()
    {
        QVERIFY(QDir(m_folder.path()).mkpath(u"mount/usr/bin"_s));
        QVERIFY(QDir(m_folder.path()).mkpath(u"mount2/usr/bin"_s));
        for (const auto& name : {u"Orvella.AppImage"_s, u"mount/usr/bin/orvella"_s, u"mount2/usr/bin/orvella"_s}) {
            QFile file(path(name));
            QVERIFY(file.open(QIODevice::WriteOnly));
        }
        QVERIFY(QFile::link(path(u"mount"_s), path(u"link"_s)));
    }

    void itIsTheExecutablesUnlessThatLiesInAnAppImage_data()
    {
        QTest::addColumn<QString>("image");
        QTest::addColumn<QString>("mount");
        QTest::addColumn<bool>("isTheImages");
        QTest::newRow("no AppImage") << u""_s << u""_s << false;
        QTest::newRow("an AppImage") << path(u"Orvella.AppImage"_s) << path(u"mount"_s) << true;
        QTest::newRow("a link to its folder") << path(u"Orvella.AppImage"_s) << path(u"link"_s) << true;
        QTest::newRow("another program's") << path(u"Orvella.AppImage"_s) << path(u"mount2"_s) << false;
        QTest::newRow("a folder with a longer name") << path(u"Orvella.AppImage"_s) << path(u"mou"_s) << false;
        QTest::newRow("no folder") << path(u"Orvella.AppImage"_s) << u""_s << false;
        QTest::newRow("no image") << u""_s << path(u"mount"_s) << false;
        QTest::newRow("an image that is gone") << path(u"Gone.AppImage"_s) << path(u"mount"_s) << false;
        QTest::newRow("a relative image") << u"Orvella.AppImage"_s << path(u"mount"_s) << false;
    }

    void itIsTheExecutablesUnlessThatLiesInAnAppImage()
    {
        QFETCH(const QString, image);
        QFETCH(const QString, mount);
        QFETCH(const bool, isTheImages);
        QProcessEnvironment environment;
        environment.insert(u"APPIMAGE"_s, image);
        environment.insert(u"APPDIR"_s, mount);
        const auto executable = path(u"mount/usr/bin/orvella"_s);

        QCOMPARE(lastingPath(environment, executable), isTheImages ? image : executable);
    }

    void withoutTheVariablesItIsTheExecutables()
    {
        QCOMPARE(lastingPath({}, u"/usr/bin/orvella"_s), u"/usr/bin/orvella"_s);
    }

private:
    [[nodiscard]] QString path(const QString& name) const { return m_folder.filePath(name); }

    QTemporaryDir m_folder;
};

QTEST_GUILESS_MAIN(LastingPathTest)

#include "LastingPathTest.moc"
