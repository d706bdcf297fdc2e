#include "updates/UpdateFixture.h"

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;
using Stage = UpdateState::Stage;
using Kind = PackageTrouble::Kind;

/// How long a check waits for a PackageKit that says nothing.
class UpdatePatienceTest final : public QObject, private UpdateFixture {
    Q_OBJECT

private:
    /// Has the transaction that is held say how far it is, and waits until that has been heard.
    void tellStatus(uint status)
    {
        settle();
        m_clock.advance(1s);
        const auto before = m_clock.nextPause();
        m_packageKit->tell({{u"Status"_s, status}});
        QTRY_VERIFY(m_clock.nextPause() > before);
    }

private Q_SLOTS:
    void init() { start({{kNormal, kNew}}); }

    void cleanup() { finish(); }

    void aPackageKitThatNeverAnswersCountsAsSilentAfterTwoMinutes()
    {
        m_packageKit->isSilent = true;
        m_flow->check();
        QTRY_COMPARE(m_packageKit->calls().size(), 1);

        m_clock.advance(119s);
        QCOMPARE(state().stage, Stage::checking);
        m_clock.advance(1s);

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::silent);
        QCOMPARE(m_clock.sleepers(), 0U);
    }

    void aTransactionThatFallsSilentIsWithdrawn()
    {
        m_packageKit->scripts[u"GetUpdates"_s].isHeld = true;
        m_flow->check();
        QTRY_VERIFY(m_packageKit->calls().contains(u"GetUpdates(2)"_s));
        settle();

        m_clock.advance(2min);

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::silent);
        QTRY_COMPARE(m_packageKit->calls().constLast(), u"Cancel()"_s);
    }

    void aTransactionThatDoesNotGetItsTurnFindsPackageKitBusy_data()
    {
        QTest::addColumn<uint>("status");
        QTest::newRow("wait") << 1U;
        QTest::newRow("waiting-for-lock") << 30U;
    }

    void aTransactionThatDoesNotGetItsTurnFindsPackageKitBusy()
    {
        QFETCH(const uint, status);
        m_packageKit->scripts[u"GetUpdates"_s].isHeld = true;
        m_flow->check();
        QTRY_VERIFY(m_packageKit->calls().contains(u"GetUpdates(2)"_s));
        tellStatus(status);

        m_clock.advance(119s);
        QCOMPARE(state().stage, Stage::checking);
        m_clock.advance(1s);

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::busy);
        QTRY_COMPARE(m_packageKit->calls().constLast(), u"Cancel()"_s);
    }

    void aRenewalThatDoesNotGetItsTurnIsTolerated()
    {
        m_packageKit->scripts[u"RefreshCache"_s].isHeld = true;
        m_flow->check();
        QTRY_VERIFY(m_packageKit->calls().contains(u"RefreshCache(false)"_s));
        tellStatus(30);

        m_clock.advance(2min);

        QTRY_COMPARE(state().stage, Stage::available);
        QVERIFY(!state().isListRenewed);
    }

    void aTransactionThatHasHadItsTurnCountsAsSilent()
    {
        m_packageKit->scripts[u"GetUpdates"_s].isHeld = true;
        m_flow->check();
        QTRY_VERIFY(m_packageKit->calls().contains(u"GetUpdates(2)"_s));
        tellStatus(30);
        tellStatus(3);

        m_clock.advance(2min);

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::silent);
    }

    /// It asks nobody, so nobody keeps it waiting but a system that hangs.
    void aQuestionThatWaitsForPermissionCountsAsSilent()
    {
        m_packageKit->scripts[u"RefreshCache"_s].isHeld = true;
        m_flow->check();
        QTRY_VERIFY(m_packageKit->calls().contains(u"RefreshCache(false)"_s));
        tellStatus(31);

        m_clock.advance(119s);
        QCOMPARE(state().stage, Stage::checking);
        m_clock.advance(1s);

        QTRY_COMPARE(state().stage, Stage::checkFailed);
        QCOMPARE(state().trouble.kind, Kind::silent);
    }

    void whatPackageKitSaysProvesThatItIsAlive()
    {
        m_packageKit->scripts[u"RefreshCache"_s].isHeld = true;
        m_flow->check();
        QTRY_VERIFY(m_packageKit->calls().contains(u"RefreshCache(false)"_s));
        const auto aliveAfter = [this](const std::function<void()>& say) {
            m_clock.advance(119s);
            const auto before = m_clock.nextPause();
            say();
            QTRY_VERIFY(m_clock.nextPause() > before);
        };

        aliveAfter([this] { m_packageKit->tell({{u"Percentage"_s, 10U}}); });
        aliveAfter([this] { m_packageKit->tellItem(); });
        aliveAfter([this] { m_packageKit->tellPackage({kNormal, kForeign}); });
        aliveAfter([this] { m_packageKit->fail(64, u"A source is broken"_s); });
        QCOMPARE(state().stage, Stage::checking);
        m_packageKit->finish(kFailed);

        QTRY_COMPARE(state().stage, Stage::available);
    }
};

QTEST_GUILESS_MAIN(UpdatePatienceTest)

#include "UpdatePatienceTest.moc"
