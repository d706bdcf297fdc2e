#include "updates/PackageTrouble.h"

#include <QTest>

using namespace orvella;
using namespace Qt::StringLiterals;
using Kind = PackageTrouble::Kind;

class PackageTroubleTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void anErrorOfTheBusHasAMeaning_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<Kind>("kind");

        const auto bus = u"org.freedesktop.DBus.Error."_s;
        QTest::newRow("no such service") << bus + u"ServiceUnknown"_s << Kind::absent;
        QTest::newRow("no owner") << bus + u"NameHasNoOwner"_s << Kind::absent;
        QTest::newRow("no bus") << bus + u"Disconnected"_s << Kind::absent;
        QTest::newRow("cannot be started") << bus + u"Spawn.ChildExited"_s << Kind::absent;
        QTest::newRow("no unit") << u"org.freedesktop.systemd1.NoSuchUnit"_s << Kind::absent;
        QTest::newRow("masked unit") << u"org.freedesktop.systemd1.UnitMasked"_s << Kind::absent;
        QTest::newRow("not allowed by the bus") << bus + u"AccessDenied"_s << Kind::refused;
        QTest::newRow("not allowed by policy")
            << u"org.freedesktop.PackageKit.Transaction.RefusedByPolicy"_s << Kind::refused;
        QTest::newRow("died while it was asked") << bus + u"NoReply"_s << Kind::gone;
        QTest::newRow("unknown method") << bus + u"UnknownMethod"_s << Kind::failed;
        QTest::newRow("nameless") << QString() << Kind::failed;
    }

    void anErrorOfTheBusHasAMeaning()
    {
        QFETCH(const QString, name);
        QFETCH(const Kind, kind);

        QCOMPARE(troubleOfBus(name).kind, kind);
        QCOMPARE(troubleOfBus(name).words, QString());
    }

    void anErrorOfPackageKitHasAMeaning_data()
    {
        QTest::addColumn<uint>("code");
        QTest::addColumn<Kind>("kind");

        QTest::newRow("no-network") << 2U << Kind::noNetwork;
        QTest::newRow("gpg-failure") << 5U << Kind::untrusted;
        QTest::newRow("transaction-cancelled") << 17U << Kind::cancelled;
        QTest::newRow("cannot-get-lock") << 26U << Kind::busy;
        QTest::newRow("bad-gpg-signature") << 30U << Kind::untrusted;
        QTest::newRow("missing-gpg-signature") << 31U << Kind::untrusted;
        QTest::newRow("not-authorized") << 48U << Kind::refused;
        QTest::newRow("cannot-install-repo-unsigned") << 50U << Kind::untrusted;
        QTest::newRow("cannot-update-repo-unsigned") << 51U << Kind::untrusted;
        QTest::newRow("cancelled-priority") << 65U << Kind::cancelled;
        QTest::newRow("lock-required") << 67U << Kind::busy;
        QTest::newRow("unknown") << 0U << Kind::failed;
        QTest::newRow("one of a later PackageKit") << 4711U << Kind::failed;
    }

    void anErrorOfPackageKitHasAMeaning()
    {
        QFETCH(const uint, code);
        QFETCH(const Kind, kind);

        const auto trouble = troubleOfCode(code, u"Its words."_s);

        QCOMPARE(trouble.kind, kind);
        // Where we know better words than PackageKit's, they are used.
        QCOMPARE(trouble.words, kind == Kind::failed ? u"Its words."_s : QString());
    }

    void wordsAreOneParagraphOfABearableLength()
    {
        QCOMPARE(troubleOfCode(4, u" It  is\n\n<b>bad</b>.\t"_s).words, u"It is <b>bad</b>."_s);
        QCOMPARE(troubleOfCode(4, QString(300, u'x')).words.size(), 300);
        QCOMPARE(troubleOfCode(4, QString(301, u'x')).words.size(), 300);
    }

    void anExitWithoutAnErrorHasAMeaning_data()
    {
        QTest::addColumn<uint>("exit");
        QTest::addColumn<Kind>("kind");

        QTest::newRow("failed") << 2U << Kind::failed;
        QTest::newRow("cancelled") << 3U << Kind::cancelled;
        QTest::newRow("key-required") << 4U << Kind::untrusted;
        QTest::newRow("killed") << 6U << Kind::cancelled;
        QTest::newRow("need-untrusted") << 8U << Kind::untrusted;
        QTest::newRow("cancelled-priority") << 9U << Kind::cancelled;
        QTest::newRow("one of a later PackageKit") << 99U << Kind::failed;
    }

    void anExitWithoutAnErrorHasAMeaning()
    {
        QFETCH(const uint, exit);
        QFETCH(const Kind, kind);

        QCOMPARE(troubleOfExit(exit), (PackageTrouble {kind, {}}));
    }
};

QTEST_GUILESS_MAIN(PackageTroubleTest)

#include "PackageTroubleTest.moc"
