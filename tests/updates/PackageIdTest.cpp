#include "updates/PackageId.h"

#include <QTest>

using namespace orvella;
using namespace Qt::StringLiterals;

class PackageIdTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anIdHasFourParts_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<bool>("isId");

        QTest::newRow("whole") << u"orvella;1.2.3-1;amd64;Debian-stable-main"_s << true;
        QTest::newRow("without architecture and origin") << u"orvella;1.2.3-1;;"_s << true;
        QTest::newRow("an origin with spaces") << u"orvella;1;all;auto: local files"_s << true;
        QTest::newRow("empty") << QString() << false;
        QTest::newRow("a name alone") << u"orvella"_s << false;
        QTest::newRow("three parts") << u"orvella;1;all"_s << false;
        QTest::newRow("five parts") << u"orvella;1;all;local;"_s << false;
        QTest::newRow("without a name") << u";1;all;local"_s << false;
        QTest::newRow("without a version") << u"orvella;;all;local"_s << false;
    }

    void anIdHasFourParts()
    {
        QFETCH(const QString, text);
        QFETCH(const bool, isId);

        const auto id = PackageId::parse(text);

        QCOMPARE(id.has_value(), isId);
        if (isId) {
            QCOMPARE(id->text, text);
            QCOMPARE(id->name, u"orvella"_s);
        }
    }

    void theShownVersionIsThatOfTheProgram_data()
    {
        QTest::addColumn<QString>("version");
        QTest::addColumn<QString>("shown");

        QTest::newRow("plain") << u"1.2.3"_s << u"1.2.3"_s;
        QTest::newRow("revision") << u"1.2.3-1"_s << u"1.2.3"_s;
        QTest::newRow("revision of a stable update") << u"1.2.3-1+deb12u1"_s << u"1.2.3"_s;
        QTest::newRow("epoch") << u"1:1.2.3"_s << u"1.2.3"_s;
        QTest::newRow("epoch and revision") << u"2:0.1.0~rc1-0ubuntu3~22.04"_s << u"0.1.0~rc1"_s;
        QTest::newRow("hyphens in the version") << u"1.0-beta-2"_s << u"1.0-beta"_s;
        QTest::newRow("a colon behind the epoch") << u"1:2:3-4"_s << u"2:3"_s;
        QTest::newRow("nothing but a revision") << u"-1"_s << u"-1"_s;
        QTest::newRow("markup is text") << u"<b>1</b>-1"_s << u"<b>1</b>"_s;
        QTest::newRow("endless") << QString(500, u'9') << QString(40, u'9');
    }

    void theShownVersionIsThatOfTheProgram()
    {
        QFETCH(const QString, version);
        QFETCH(const QString, shown);

        QCOMPARE((PackageId {{}, u"orvella"_s, version}.shownVersion()), shown);
    }

    void versionsThatWouldLookAlikeAreShownWhole_data()
    {
        QTest::addColumn<QString>("installed");
        QTest::addColumn<QString>("update");
        QTest::addColumn<QString>("shownInstalled");
        QTest::addColumn<QString>("shownUpdate");

        QTest::newRow("another version") << u"0.1.0-1"_s << u"0.2.0-1"_s << u"0.1.0"_s << u"0.2.0"_s;
        QTest::newRow("another revision") << u"0.1.0-1"_s << u"0.1.0-2"_s << u"0.1.0-1"_s << u"0.1.0-2"_s;
        QTest::newRow("a revision for the first time") << u"0.1.0"_s << u"0.1.0-1"_s << u"0.1.0"_s << u"0.1.0-1"_s;
        QTest::newRow("another epoch") << u"0.1.0-1"_s << u"1:0.1.0-1"_s << u"0.1.0-1"_s << u"1:0.1.0-1"_s;
        QTest::newRow("another epoch and version") << u"0.2.0-1"_s << u"1:0.1.0-1"_s << u"0.2.0"_s << u"0.1.0"_s;
    }

    void versionsThatWouldLookAlikeAreShownWhole()
    {
        QFETCH(const QString, installed);
        QFETCH(const QString, update);
        QFETCH(const QString, shownInstalled);
        QFETCH(const QString, shownUpdate);
        const PackageId before {{}, u"orvella"_s, installed};
        const PackageId after {{}, u"orvella"_s, update};

        QCOMPARE(before.shownVersionBeside(after), shownInstalled);
        QCOMPARE(after.shownVersionBeside(before), shownUpdate);
    }
};

QTEST_GUILESS_MAIN(PackageIdTest)

#include "PackageIdTest.moc"
