#include "api/Endpoints.h"
#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakePlatform platform;
    FakeTransport transport;
    AppState state;

    World()
        : state(platform.lend(), transport)
    {
        transport.answerEverything();
    }

    void refresh()
    {
        state.refreshWallet();
        settle();
    }
};

} // namespace

class EarningsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void theWalletIsTakenOver()
    {
        World world;
        world.state.lastError = u"old"_s;

        world.refresh();

        QVERIFY(world.state.linked());
        QCOMPARE(world.state.availableCents(), 637);
        QCOMPARE(world.state.pendingCents(), 175);
        QCOMPARE(world.state.paidCents(), 4000);
        QCOMPARE(world.state.lifetimeCents(), 4812);
        QCOMPARE(world.state.statusTitle(), u"$6.37"_s);
        QVERIFY(!world.state.lastError());
    }

    void whileAnAdIsOnOfferTheTitleStaysAd()
    {
        World world;
        world.state.availableAd = anAd();

        world.refresh();

        QCOMPARE(world.state.statusTitle(), u"AD"_s);
    }

    void anAnswerThatALaterOneHasOvertakenIsDropped()
    {
        World world;
        auto early = world.transport.hold(endpoints::kWallet);
        world.refresh();
        world.refresh();
        QCOMPARE(world.state.lifetimeCents(), 4812);

        auto old = aWallet();
        old.wallet.lifetimeCents = 4800;
        early.answer(200, old);

        QCOMPARE(world.state.lifetimeCents(), 4812);
    }

    void anEarlierAnswerDoesNotMakeUpForALaterQuestion()
    {
        World world;
        auto early = world.transport.hold(endpoints::kWallet);
        world.refresh();
        world.transport.fail(endpoints::kWallet, u"no network"_s);
        world.refresh();
        world.transport.answer(endpoints::kWallet, aWallet());
        auto old = aWallet();
        old.wallet.lifetimeCents = 4800;
        early.answer(200, old);
        QCOMPARE(world.state.lifetimeCents(), 4800);

        world.state.startPolling();
        settle();

        QCOMPARE(world.state.lifetimeCents(), 4812);
    }

    void aWalletThatIsDoubtedIsAskedForUntilNoRequestCanBeUnderWay_data()
    {
        QTest::addColumn<int>("secondsBeforeThePoll");
        QTest::addColumn<int>("asked");
        QTest::newRow("one may be under way at the next poll") << 59 << 2;
        QTest::newRow("none is") << 60 << 1;
    }

    void aWalletThatIsDoubtedIsAskedForUntilNoRequestCanBeUnderWay()
    {
        QFETCH(const int, secondsBeforeThePoll);
        QFETCH(const int, asked);
        World world;
        world.state.doubtWallet();
        world.platform.clock.advance(std::chrono::seconds(secondsBeforeThePoll));

        world.state.startPolling();
        settle();

        QCOMPARE(world.transport.count(endpoints::kWallet), 1);
        world.platform.clock.advance(300s);
        QCOMPARE(world.transport.count(endpoints::kWallet), asked);
        world.platform.clock.advance(300s);
        QCOMPARE(world.transport.count(endpoints::kWallet), asked);
    }

    void aWalletThatCouldNotBeHadIsAskedForAfterTheNextPoll()
    {
        World world;
        world.transport.fail(endpoints::kWallet, u"no network"_s);
        world.refresh();
        world.transport.answer(endpoints::kWallet, aWallet());

        world.state.startPolling();
        settle();

        QCOMPARE(world.transport.paths(),
            (QStringList {endpoints::kWallet, endpoints::kHeartbeat, endpoints::kAdsAvailable, endpoints::kWallet}));
        QCOMPARE(world.state.lifetimeCents(), 4812);
        world.platform.clock.advance(300s);
        QCOMPARE(world.transport.count(endpoints::kWallet), 2);
    }

    void itIsNotAskedForWhileTheServiceDoesNotAnswer()
    {
        World world;
        world.transport.fail(endpoints::kWallet, u"no network"_s);
        world.transport.fail(endpoints::kAdsAvailable, u"no network"_s);
        world.refresh();

        world.state.startPolling();
        world.platform.clock.advance(300s);

        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 2);
        QCOMPARE(world.transport.count(endpoints::kWallet), 1);
    }

    void aWalletThatIsNoLongerLinkedSaysSo()
    {
        World world;
        world.refresh();
        auto wallet = aWallet();
        wallet.linked = false;
        world.transport.answer(endpoints::kWallet, wallet);

        world.refresh();

        QVERIFY(!world.state.linked());
    }

    void aFailedWalletChangesNothingButTheError()
    {
        World world;
        world.refresh();
        world.transport.fail(endpoints::kWallet, u"No network."_s);

        world.refresh();

        QVERIFY(world.state.linked());
        QCOMPARE(world.state.availableCents(), 637);
        QCOMPARE(world.state.statusTitle(), u"$6.37"_s);
        QCOMPARE(world.state.lastError(), u"No network."_s);
    }

    void theWalletIsAppliedInOrder()
    {
        World world;
        QStringList changes;
        connect(&world.state, &Observable::willChange, &world.state, [&] {
            changes.append(u"%1 %2 %3 %4 %5 %6"_s.arg(world.state.linked())
                    .arg(world.state.availableCents())
                    .arg(world.state.pendingCents())
                    .arg(world.state.paidCents())
                    .arg(world.state.lifetimeCents())
                    .arg(world.state.statusTitle()));
        });

        world.refresh();

        QCOMPARE(changes,
            (QStringList {u"0 0 0 0 0 $0.00"_s, u"1 0 0 0 0 $0.00"_s, u"1 637 0 0 0 $0.00"_s, u"1 637 175 0 0 $0.00"_s,
                u"1 637 175 4000 0 $0.00"_s, u"1 637 175 4000 4812 $0.00"_s, u"1 637 175 4000 4812 $6.37"_s}));
    }

    void finishingTheOfferedAdTakesTheOfferBack()
    {
        World world;
        world.state.availableCents = 637;
        world.state.availableAd = anAd();
        world.state.statusTitle = u"AD"_s;

        world.state.finishAd(anAd());

        QVERIFY(!world.state.availableAd());
        QCOMPARE(world.state.statusTitle(), u"$6.37"_s);
        QVERIFY(world.state.isSuppressed(anAd()));
    }

    void finishingAnotherAdKeepsTheOfferButShowsTheBalance()
    {
        World world;
        auto other = anAd();
        other.creativeId = u"creative-2"_s;
        world.state.availableAd = other;
        world.state.statusTitle = u"AD"_s;

        world.state.finishAd(anAd());

        QCOMPARE(world.state.availableAd(), other);
        QCOMPARE(world.state.statusTitle(), u"$0.00"_s);
        QVERIFY(world.state.isSuppressed(anAd()));
        QVERIFY(!world.state.isSuppressed(other));
    }

    void finishingAnAdAsksNothingAndChangesNoMoney()
    {
        World world;
        world.state.lastEarnedCents = 12.5;
        world.state.availableCents = 5;

        world.state.finishAd(anAd());
        settle();

        QVERIFY(world.transport.requests().empty());
        QCOMPARE(world.state.lastEarnedCents(), 12.5);
        QCOMPARE(world.state.availableCents(), 5);
    }

    void theWalletRequestHasNoBodyAndNoContentType()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");

        world.refresh();

        const auto& request = world.transport.requests().front();
        QCOMPARE(request.http.method, "GET");
        QVERIFY(request.http.body.isEmpty());
        QVERIFY(!request.header("content-type"));
        QCOMPARE(request.header("authorization"), "Bearer token");
    }
};

QTEST_GUILESS_MAIN(EarningsTest)

#include "EarningsTest.moc"
