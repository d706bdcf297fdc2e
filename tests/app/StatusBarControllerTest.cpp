#include "api/Endpoints.h"
#include "app/StatusBarWorld.h"
#include "ui/ad/CountdownGauge.h"

#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

QPushButton* button(QWidget* in, const QString& name)
{
    return in->findChild<QPushButton*>(name);
}

qint64 secondsLeft()
{
    return StatusBarWorld::panel()->findChild<CountdownGauge*>()->remaining();
}

bool isPaid()
{
    return StatusBarWorld::panel()->findChild<QLabel*>(u"paid"_s) != nullptr;
}

} // namespace

/// What the status item shows, and the ads that it opens.
class StatusBarControllerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theItemShowsADollarAndTheBalanceInItsDescription()
    {
        StatusBarWorld world;

        world.start();

        QCOMPARE(world.platform.statusItem.appearances.front(),
            (StatusAppearance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $0.00 available"_s}));
        QCOMPARE(world.platform.statusItem.appearances.back(),
            (StatusAppearance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $6.37 available"_s}));
    }

    void anOfferTurnsTheItemGreen()
    {
        StatusBarWorld world;

        world.startWithOffer();

        QCOMPARE(world.platform.statusItem.appearances.back(),
            (StatusAppearance {u"$ AD"_s, 42, StatusAppearance::Tone::green, u"Orvella · ad ready"_s}));
    }

    void onlyTheExactTitleIsAdMode_data()
    {
        QTest::addColumn<QString>("title");
        QTest::newRow("trailing blank") << u"AD "_s;
        QTest::newRow("lower case") << u"ad"_s;
        QTest::newRow("off") << u"OFF"_s;
        QTest::newRow("empty") << QString();
    }

    void onlyTheExactTitleIsAdMode()
    {
        QFETCH(QString, title);
        StatusBarWorld world;
        world.start();

        world.controller->updateStatusItem(title);

        QCOMPARE(world.platform.statusItem.appearances.back().text, u"$"_s);
        QCOMPARE(world.description(), u"Orvella · %1 available"_s.arg(title));
    }

    void aFailedRegistrationShowsInTheDescription()
    {
        StatusBarWorld world;
        world.platform.secrets.remove(Keychain::kService, u"default"_s);
        world.transport.fail(endpoints::kRegister, u"No network."_s);

        world.start();

        QCOMPARE(world.description(), u"Orvella · OFF available"_s);
    }

    void theItemReceivesEveryTitleInOrderTheCurrentOneFirst()
    {
        StatusBarWorld world;
        world.controller = std::make_unique<StatusBarController>(world.platform.lend(), world.transport);
        world.platform.statusItem.appearances.clear();

        world.controller->state().statusTitle = u"one"_s;
        world.controller->state().statusTitle = u"two"_s;
        QVERIFY(world.platform.statusItem.appearances.empty());
        settle();

        QStringList descriptions;
        for (const auto& appearance : world.platform.statusItem.appearances)
            descriptions.append(appearance.description);
        QCOMPARE(descriptions.mid(0, 3),
            (QStringList {u"Orvella · $0.00 available"_s, u"Orvella · one available"_s, u"Orvella · two available"_s}));
    }

    void aViewThatIsClosedWhileItsVerdictIsUnderWayHasTheWalletAskedAfterTheNextPoll()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();
        const auto verdict = world.transport.hold(endpoints::kSessionComplete);
        world.platform.clock.advance(15s);
        QVERIFY(verdict.isAwaited());
        const auto walletsBefore = world.transport.count(endpoints::kWallet);
        world.transport.answer(endpoints::kAdsAvailable, noOffer());

        button(StatusBarWorld::panel(), u"close"_s)->click();
        settle();
        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore);
        world.platform.clock.advance(300s);

        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore + 1);
    }

    void aCompletionWhoseAnswerIsLostHasTheWalletAskedOnceMoreAfterTheNextPoll()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();
        world.transport.fail(endpoints::kSessionComplete, u"No network."_s);
        const auto walletsBefore = world.transport.count(endpoints::kWallet);
        world.transport.answer(endpoints::kAdsAvailable, noOffer());

        world.platform.clock.advance(15s);
        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore + 1);
        world.platform.clock.advance(300s);
        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore + 2);
        world.platform.clock.advance(300s);

        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore + 2);
    }

    void aClickOpensTheOfferedAdAndItIsWatchedToPaid()
    {
        StatusBarWorld world;
        world.startWithOffer();

        world.click();
        QVERIFY(StatusBarWorld::panel());
        QCOMPARE(secondsLeft(), 15);
        QVERIFY(!isPaid());

        world.platform.clock.advance(8s);
        QCOMPARE(secondsLeft(), 7);

        const auto walletsBefore = world.transport.count(endpoints::kWallet);
        auto wallet = aWallet();
        wallet.wallet.availableCents = 649;
        world.transport.answer(endpoints::kWallet, wallet);
        world.platform.clock.advance(7s);
        QVERIFY(isPaid());
        QCOMPARE(world.controller->state().lastEarnedCents(), 12.5);
        QVERIFY(!world.controller->state().availableAd());
        QVERIFY(world.controller->state().isSuppressed(anAd()));
        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore + 1);
        QCOMPARE(world.description(), u"Orvella · $6.49 available"_s);
        QVERIFY(StatusBarWorld::panel());

        world.platform.clock.advance(3s);
        QVERIFY(!StatusBarWorld::panel());
    }

    void aClickWhileThePanelIsShownDoesNothing()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();

        world.click();

        QVERIFY(StatusBarWorld::panel());
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 1);
    }

    void closingTheAdEarnsNothingAndRestsTheCreative()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();
        const auto walletsBefore = world.transport.count(endpoints::kWallet);

        button(StatusBarWorld::panel(), u"close"_s)->click();
        world.platform.clock.advance(1min);

        QVERIFY(!StatusBarWorld::panel());
        QVERIFY(!world.controller->state().availableAd());
        QVERIFY(!world.controller->state().lastEarnedCents());
        QVERIFY(world.controller->state().isSuppressed(anAd()));
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore);
        QCOMPARE(world.description(), u"Orvella · $6.37 available"_s);
    }

    void aWindowManagerThatClosesThePanelDismissesTheAd()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();

        StatusBarWorld::panel()->close();
        world.platform.clock.advance(1min);

        QVERIFY(!StatusBarWorld::panel());
        QVERIFY(world.controller->state().isSuppressed(anAd()));
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
    }

    void anAdThatEarnedNothingStillRefreshesTheWallet()
    {
        StatusBarWorld world;
        world.transport.fail(endpoints::kSessionStart, u"No network."_s);
        world.startWithOffer();
        const auto walletsBefore = world.transport.count(endpoints::kWallet);

        world.click();

        QVERIFY(!world.controller->state().lastEarnedCents());
        QVERIFY(world.controller->state().isSuppressed(anAd()));
        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore + 1);
    }

    void anAdThatEarnedNothingLeavesTheLastEarningsStanding()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();
        world.platform.clock.advance(18s);
        QCOMPARE(world.controller->state().lastEarnedCents(), 12.5);
        auto other = anAd();
        other.creativeId = u"creative-2"_s;
        world.controller->state().availableAd = other;
        world.transport.fail(endpoints::kSessionStart, u"No network."_s);

        world.click();

        QVERIFY(world.controller->state().isSuppressed(other));
        QCOMPARE(world.controller->state().lastEarnedCents(), 12.5);
    }

    void anOfferThatIsTakenBackDoesNotCloseThePanel()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();

        world.controller->state().availableAd = std::nullopt;
        settle();

        QVERIFY(StatusBarWorld::panel());
    }

    void anotherAdOpensAfterTheFirstPanelHasClosed()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();
        world.platform.clock.advance(18s);
        QVERIFY(!StatusBarWorld::panel());
        auto other = anAd();
        other.creativeId = u"creative-2"_s;
        other.body = u"Salt & pepper"_s;
        world.controller->state().availableAd = other;

        world.click();

        QVERIFY(StatusBarWorld::panel());
        QCOMPARE(button(StatusBarWorld::panel(), u"openAd"_s)->accessibleName(), u"Open ad: Salt & pepper"_s);
    }

    void theAnonymousModeOfTheOpeningIsSent()
    {
        StatusBarWorld world;
        world.platform.settings.values = {{u"anonymousMode"_s, false}};
        world.startWithOffer();

        world.click();

        QCOMPARE(world.transport.requests(endpoints::kSessionStart).front().body.at(u"anonymousMode"_s), Json(false));
    }

    void aPanelThatTheViewerOpensTakesTheKeyboard()
    {
        StatusBarWorld world;
        world.startWithOffer();

        world.click();

        QCOMPARE(world.platform.windows.activated, std::vector {StatusBarWorld::panel()->windowHandle()});
    }

    void thePlaceOfANewItemIsSeededWhereTheSystemKeepsIt()
    {
        FakePlatform platform;
        platform.statusItem.placeIsASetting = true;

        StatusBarController::prepareStatusItemPlacement(platform.lend());

        QCOMPARE(
            platform.settings.values.at(u"NSStatusItem Preferred Position OrvellaStatusItem"_s), Json(qint64 {140}));
        QCOMPARE(platform.settings.values.at(u"NSStatusItem Visible OrvellaStatusItem"_s), Json(true));
    }

    void aPlaceThatTheViewerChoseIsLeftAlone()
    {
        FakePlatform platform;
        platform.statusItem.placeIsASetting = true;
        platform.settings.values = {{u"NSStatusItem Preferred Position OrvellaStatusItem"_s, u"far left"_s},
            {u"NSStatusItem Visible OrvellaStatusItem"_s, false}};

        StatusBarController::prepareStatusItemPlacement(platform.lend());

        QVERIFY(platform.settings.writes.isEmpty());
    }

    void noPlaceIsSeededWhereTheBarKeepsItItself()
    {
        FakePlatform platform;

        StatusBarController::prepareStatusItemPlacement(platform.lend());

        QVERIFY(platform.settings.writes.isEmpty());
    }

    void endingInTheMiddleOfAnAdLeavesNothingWaiting()
    {
        StatusBarWorld world;
        world.startWithOffer();
        world.click();
        world.platform.clock.advance(5s);

        world.controller.reset();
        settle();

        QVERIFY(!StatusBarWorld::panel());
        QCOMPARE(world.platform.clock.sleepers(), 0U);
        QCOMPARE(world.transport.waiting(), 0);
    }
};

QTEST_MAIN(StatusBarControllerTest)

#include "StatusBarControllerTest.moc"
