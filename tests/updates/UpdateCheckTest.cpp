#include "updates/UpdateFixture.h"

using namespace orvella;
using namespace Qt::StringLiterals;
using Stage = UpdateState::Stage;
using Kind = PackageTrouble::Kind;
using Script = FakePackageKit::Script;

Q_DECLARE_METATYPE(orvella::FakePackageKit::Script)
Q_DECLARE_METATYPE(orvella::PackageTrouble)

namespace {

constexpr uint kBlocked = 9;

} // namespace

class UpdateCheckTest final : public QObject, private UpdateFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start({{kNormal, kForeign}, {kNormal, kNewUpdater}, {kNormal, kNew}}); }

    void cleanup() { finish(); }

    void nobodyIsAskedBeforeTheViewerAsks()
    {
        QTest::qWait(100);

        QCOMPARE(m_packageKit->calls(), QStringList());
    }

    void aNewerVersionIsAvailable()
    {
        m_flow->check();
        QCOMPARE(state().stage, Stage::checking);

        QTRY_COMPARE(state().stage, Stage::available);
        QCOMPARE(state().currentVersion, u"0.1.0"_s);
        QCOMPARE(state().newVersion, u"0.2.0"_s);
    }

    void anUpdateOfThePackagingAloneIsToldByTheWholeVersions_data()
    {
        QTest::addColumn<uint>("info");
        QTest::addColumn<Stage>("stage");
        QTest::newRow("available") << kNormal << Stage::available;
        QTest::newRow("held back") << kBlocked << Stage::heldBack;
    }

    void anUpdateOfThePackagingAloneIsToldByTheWholeVersions()
    {
        QFETCH(const uint, info);
        QFETCH(const Stage, stage);
        m_packageKit->scripts[u"GetUpdates"_s].packages = {{info, u"orvella;0.1.0-2;amd64;orvella-stable-main"_s}};

        m_flow->check();

        QTRY_COMPARE(state().stage, stage);
        QCOMPARE(state().currentVersion, u"0.1.0-1"_s);
        QCOMPARE(state().newVersion, u"0.1.0-2"_s);
    }

    void theListIsRenewedBeforeTheQuestionForUpdates()
    {
        offer();

        const QStringList expected {u"RefreshCache(false)"_s, u"Resolve(4, orvella)"_s, u"GetUpdates(2)"_s};
        QCOMPARE(m_packageKit->requests(), expected);
    }

    void noQuestionAsksForAPassword()
    {
        offer();

        QCOMPARE(m_packageKit->calls().filter(u"interactive=true"_s), QStringList());
        QCOMPARE(m_packageKit->calls().filter(u"interactive=false"_s).size(), 3);
    }

    void withoutANewerVersionItIsUpToDate_data()
    {
        QTest::addColumn<Script>("updates");
        QTest::newRow("no updates") << Script {};
        QTest::newRow("updates of others") << Script {.packages = {{kNormal, kForeign}}};
        QTest::newRow("one with a name like ours") << Script {.packages = {{kNormal, u"orvella-games;9;all;x"_s}}};
        QTest::newRow("ids that are none") << Script {.packages = {{kNormal, u"orvella"_s}, {kNormal, {}}}};
    }

    void withoutANewerVersionItIsUpToDate()
    {
        QFETCH(const Script, updates);
        m_packageKit->scripts[u"GetUpdates"_s] = updates;

        m_flow->check();

        QTRY_COMPARE(state().stage, Stage::upToDate);
        QCOMPARE(state().currentVersion, u"0.1.0"_s);
        QVERIFY(state().isListRenewed);
    }

    void aVersionThatTheSystemHoldsBackIsNotInstalled()
    {
        m_packageKit->scripts[u"GetUpdates"_s].packages = {{kBlocked, kNew}, {kNormal, kNewUpdater}};
        m_flow->check();
        QTRY_COMPARE(state().stage, Stage::heldBack);
        QCOMPARE(state().newVersion, u"0.2.0"_s);

        m_flow->install();
        QTest::qWait(50);

        QCOMPARE(m_packageKit->requests().filter(u"UpdatePackages"_s), QStringList());
    }

    void aListThatCannotBeRenewedIsTolerated_data()
    {
        QTest::addColumn<Script>("renewal");
        QTest::newRow("refused") << error(48);
        QTest::newRow("refused by the bus") << Script {.refusal = u"org.freedesktop.DBus.Error.AccessDenied"_s};
        QTest::newRow("no lock") << error(26);
        QTest::newRow("a source is broken") << error(64, u"Failed to fetch a source"_s);
        QTest::newRow("cancelled by another program") << Script {.exit = kCancelled};
    }

    void aListThatCannotBeRenewedIsTolerated()
    {
        QFETCH(const Script, renewal);
        m_packageKit->scripts[u"RefreshCache"_s] = renewal;
        offer();

        m_packageKit->scripts[u"GetUpdates"_s] = {};
        m_flow->check();

        QTRY_COMPARE(state().stage, Stage::upToDate);
        QVERIFY(!state().isListRenewed);
    }

    void withoutANetworkAnOldListSaysNothing()
    {
        m_packageKit->scripts[u"RefreshCache"_s] = error(2);
        m_packageKit->scripts[u"GetUpdates"_s] = {};

        m_flow->check();

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::noNetwork);
    }

    void withoutANetworkAVersionThatIsKnownIsStillAvailable()
    {
        m_packageKit->scripts[u"RefreshCache"_s] = error(2);

        m_flow->check();

        QTRY_COMPARE(state().stage, Stage::available);
    }

    void aProgramThatIsNoPackageCannotBeUpdated()
    {
        m_packageKit->scripts[u"Resolve"_s] = {};

        m_flow->check();

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::unknownPackage);
        QCOMPARE(m_packageKit->requests().filter(u"GetUpdates"_s), QStringList());
    }

    void troubleWithAQuestionEndsTheCheck_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<Script>("answer");
        QTest::addColumn<PackageTrouble>("trouble");

        const auto resolve = u"Resolve"_s;
        const auto updates = u"GetUpdates"_s;
        QTest::newRow("words") << resolve << error(4, u" It  is\n<b>bad</b>. "_s)
                               << PackageTrouble {Kind::failed, u"It is <b>bad</b>."_s};
        QTest::newRow("no error named") << updates << Script {.exit = kFailed} << PackageTrouble {Kind::failed, {}};
        QTest::newRow("an exit nobody knows") << updates << Script {.exit = 99} << PackageTrouble {Kind::failed, {}};
        QTest::newRow("cancelled") << resolve << error(17) << PackageTrouble {Kind::cancelled, {}};
        QTest::newRow("a lock") << updates << error(26) << PackageTrouble {Kind::busy, {}};
        QTest::newRow("a method it has not")
            << updates << Script {.refusal = u"org.freedesktop.DBus.Error.UnknownMethod"_s}
            << PackageTrouble {Kind::failed, {}};
    }

    void troubleWithAQuestionEndsTheCheck()
    {
        QFETCH(const QString, method);
        QFETCH(const Script, answer);
        QFETCH(const PackageTrouble, trouble);
        m_packageKit->scripts[method] = answer;

        m_flow->check();

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, trouble.kind);
        QCOMPARE(state().trouble.words, trouble.words);
    }

    void aTransactionThatIsRefusedEndsTheCheck()
    {
        m_packageKit->refusal = u"org.freedesktop.DBus.Error.AccessDenied"_s;

        m_flow->check();

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::refused);
    }

    void withoutPackageKitTheCheckSaysSo()
    {
        m_packageKit->stop();

        m_flow->check();

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::absent);
    }

    void withoutABusTheCheckSaysSo()
    {
        UpdateFlow flow(QDBusConnection(u"no such bus"_s), m_clock);

        flow.check();

        QTRY_COMPARE(flow.state().stage, Stage::checkFailed);
        QCOMPARE(flow.state().trouble.kind, Kind::absent);
    }

    void aPackageKitThatDiesInTheMiddleEndsTheCheck()
    {
        m_packageKit->scripts[u"RefreshCache"_s].isHeld = true;
        m_flow->check();
        QTRY_VERIFY(m_packageKit->calls().contains(u"RefreshCache(false)"_s));

        m_packageKit->stop();

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::gone);
    }

    void nobodyElseCanSpeakForPackageKit()
    {
        m_packageKit->scripts[u"RefreshCache"_s].isHeld = true;
        m_flow->check();
        QTRY_VERIFY(m_packageKit->calls().contains(u"RefreshCache(false)"_s));

        m_packageKit->finishAsStranger(1);
        QTest::qWait(100);

        QCOMPARE(m_packageKit->requests(), QStringList {u"RefreshCache(false)"_s});
    }

    void theEndOfAFlowThatIsDoneWithdrawsNothing()
    {
        offer();

        m_flow.reset();
        QTest::qWait(50);

        QCOMPARE(m_packageKit->calls().filter(u"Cancel"_s), QStringList());
    }
};

QTEST_GUILESS_MAIN(UpdateCheckTest)

#include "UpdateCheckTest.moc"
