#include "updates/UpdateFixture.h"

#include <QSignalSpy>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using Stage = UpdateState::Stage;
using Kind = PackageTrouble::Kind;
using Activity = PackageProgress::Activity;
using Script = FakePackageKit::Script;

Q_DECLARE_METATYPE(orvella::FakePackageKit::Script)
Q_DECLARE_METATYPE(orvella::PackageTrouble)

namespace {

constexpr uint kRemoving = 13;

} // namespace

class UpdateInstallationTest final : public QObject, private UpdateFixture {
    Q_OBJECT

private:
    /// Brings the flow to an installation that is held.
    void beginInstallation()
    {
        m_packageKit->scripts[u"UpdatePackages"_s].isHeld = true;
        offer();
        m_flow->install();
        QTRY_VERIFY(m_packageKit->calls().constLast().startsWith(u"UpdatePackages(2"_s));
    }

private Q_SLOTS:
    void init() { start({{kNormal, kForeign}, {kNormal, kNewUpdater}, {kNormal, kNew}}); }

    void cleanup() { finish(); }

    void anInstallationIsRehearsedFirst()
    {
        offer();

        m_flow->install();
        QCOMPARE(state().stage, Stage::installing);

        QTRY_COMPARE(state().stage, Stage::installed);
        const auto packages = kNewUpdater + u", "_s + kNew;
        const QStringList expected {u"UpdatePackages(6, %1)"_s.arg(packages), u"UpdatePackages(2, %1)"_s.arg(packages)};
        QCOMPARE(m_packageKit->requests().mid(3), expected);
    }

    void onlyTheInstallationMayAskForAPassword()
    {
        offer();

        m_flow->install();

        QTRY_COMPARE(state().stage, Stage::installed);
        const auto asking = m_packageKit->calls().filter(u"interactive=true"_s);
        QCOMPARE(asking.size(), 1);
        QCOMPARE(m_packageKit->calls().indexOf(asking.constFirst()), m_packageKit->calls().size() - 2);
    }

    void anInstallationThatWouldRemoveOthersIsNotBegun()
    {
        m_packageKit->scripts[u"Simulate"_s].packages = {{kNormal, kNew}, {kRemoving, kForeign}};
        offer();

        m_flow->install();

        QTRY_COMPARE(state().stage, Stage::installationFailed);
        QCOMPARE(state().trouble.kind, Kind::wouldRemove);
        QCOMPARE(m_packageKit->requests().filter(u"UpdatePackages(2"_s), QStringList());
    }

    void troubleWithTheInstallationIsNamed_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<Script>("answer");
        QTest::addColumn<PackageTrouble>("trouble");

        const auto rehearsal = u"Simulate"_s;
        const auto update = u"UpdatePackages"_s;
        QTest::newRow("rehearsal") << rehearsal << error(13, u"It depends on what is not there."_s)
                                   << PackageTrouble {Kind::failed, u"It depends on what is not there."_s};
        QTest::newRow("no password") << update << error(48, u"Failed to obtain authentication."_s)
                                     << PackageTrouble {Kind::refused, {}};
        QTest::newRow("refused by policy")
            << update << Script {.refusal = u"org.freedesktop.PackageKit.Transaction.RefusedByPolicy"_s}
            << PackageTrouble {Kind::refused, {}};
        QTest::newRow("cancelled") << update << Script {.exit = kCancelled} << PackageTrouble {Kind::cancelled, {}};
        QTest::newRow("no network") << update << error(2, u"Cannot download"_s) << PackageTrouble {Kind::noNetwork, {}};
        QTest::newRow("unsigned") << update << Script {.exit = 8} << PackageTrouble {Kind::untrusted, {}};
        QTest::newRow("a bad signature") << update << error(30) << PackageTrouble {Kind::untrusted, {}};
        QTest::newRow("a lock") << update << error(26, u"dpkg is locked"_s) << PackageTrouble {Kind::busy, {}};
        QTest::newRow("no space") << update << error(46, u"No space is left."_s)
                                  << PackageTrouble {Kind::failed, u"No space is left."_s};
    }

    void troubleWithTheInstallationIsNamed()
    {
        QFETCH(const QString, method);
        QFETCH(const Script, answer);
        QFETCH(const PackageTrouble, trouble);
        m_packageKit->scripts[method] = answer;
        offer();

        m_flow->install();

        QTRY_COMPARE(state().stage, Stage::installationFailed);
        QCOMPARE(state().trouble.kind, trouble.kind);
        QCOMPARE(state().trouble.words, trouble.words);
    }

    void theFirstErrorIsTheReason()
    {
        beginInstallation();

        m_packageKit->fail(46, u"No space is left."_s);
        m_packageKit->fail(4, u"Something went wrong."_s);
        m_packageKit->finish(kFailed);

        QTRY_COMPARE(state().stage, Stage::installationFailed);
        QCOMPARE(state().trouble.words, u"No space is left."_s);
    }

    void progressIsWhatPackageKitSays_data()
    {
        QTest::addColumn<uint>("status");
        QTest::addColumn<Activity>("activity");
        QTest::newRow("wait") << 1U << Activity::waiting;
        QTest::newRow("waiting-for-lock") << 30U << Activity::waiting;
        QTest::newRow("waiting-for-auth") << 31U << Activity::asking;
        QTest::newRow("download") << 8U << Activity::downloading;
        QTest::newRow("install") << 9U << Activity::installing;
        QTest::newRow("update") << 10U << Activity::installing;
        QTest::newRow("loading-cache") << 27U << Activity::preparing;
        QTest::newRow("nobody knows") << 999U << Activity::preparing;
    }

    void progressIsWhatPackageKitSays()
    {
        QFETCH(const uint, status);
        QFETCH(const Activity, activity);
        beginInstallation();

        m_packageKit->tell({{u"Status"_s, status}, {u"Percentage"_s, 42U}});
        QTRY_COMPARE(state().progress, (PackageProgress {activity, 42}));
        m_packageKit->tell({{u"Percentage"_s, 101U}});
        QTRY_COMPARE(state().progress, (PackageProgress {activity, std::nullopt}));
        m_packageKit->tell({{u"Percentage"_s, 100U}});

        QTRY_COMPARE(state().progress, (PackageProgress {activity, 100}));
    }

    void whileTheViewerIsAskedThereIsNoLimit()
    {
        beginInstallation();
        m_packageKit->tell({{u"Status"_s, 31U}});
        QTRY_COMPARE(m_clock.sleepers(), 0U);

        m_clock.advance(24h);
        QCOMPARE(state().stage, Stage::installing);
        m_packageKit->tell({{u"Status"_s, 9U}});

        QTRY_COMPARE(m_clock.sleepers(), 1U);
    }

    void anInstallationMayBeSilentForAQuarterOfAnHour()
    {
        beginInstallation();
        settle();

        m_clock.advance(14min + 59s);
        QCOMPARE(state().stage, Stage::installing);
        m_clock.advance(1s);

        QTRY_COMPARE(state().stage, Stage::installationFailed);
        QCOMPARE(state().trouble.kind, Kind::silent);
    }

    void anInstallationThatDoesNotGetItsTurnFindsPackageKitBusy_data()
    {
        QTest::addColumn<uint>("status");
        QTest::newRow("wait") << 1U;
        QTest::newRow("waiting-for-lock") << 30U;
    }

    void anInstallationThatDoesNotGetItsTurnFindsPackageKitBusy()
    {
        QFETCH(const uint, status);
        beginInstallation();
        m_packageKit->tell({{u"Status"_s, status}});
        QTRY_COMPARE(state().progress.activity, Activity::waiting);

        m_clock.advance(14min + 59s);
        QCOMPARE(state().stage, Stage::installing);
        m_clock.advance(1s);

        QTRY_COMPARE(state().stage, Stage::installationFailed);
        QCOMPARE(state().trouble.kind, Kind::busy);
        QTRY_COMPARE(m_packageKit->calls().constLast(), u"Cancel()"_s);
    }

    void aPackageKitThatDiesInTheMiddleEndsTheInstallation()
    {
        beginInstallation();

        m_packageKit->stop();

        QTRY_COMPARE(state().stage, Stage::installationFailed);
        QCOMPARE(state().trouble.kind, Kind::gone);
    }

    void theEndOfTheFlowWithdrawsWhatIsUnderWay()
    {
        beginInstallation();

        m_flow.reset();

        QTRY_COMPARE(m_packageKit->calls().constLast(), u"Cancel()"_s);
    }

    void nothingIsInstalledThatWasNotOffered()
    {
        m_flow->install();
        m_packageKit->scripts[u"GetUpdates"_s] = {};
        m_flow->check();
        QTRY_COMPARE(state().stage, Stage::upToDate);

        m_flow->install();
        QTest::qWait(50);

        QCOMPARE(state().stage, Stage::upToDate);
        QCOMPARE(m_packageKit->requests().filter(u"UpdatePackages"_s), QStringList());
    }
};

QTEST_GUILESS_MAIN(UpdateInstallationTest)

#include "UpdateInstallationTest.moc"
