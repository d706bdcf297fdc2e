#include "app/StatusBarController.h"

#include "api/Endpoints.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "ui/ad/CountdownGauge.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<StatusBarController> controller;

    World()
    {
        platform.secrets.put(Keychain::kService, "token");
        transport.answerEverything();
    }

    void start()
    {
        controller = std::make_unique<StatusBarController>(platform.lend(), transport);
        settle();
    }

    void startWithOffer()
    {
        transport.answer(endpoints::kAdsAvailable, anOffer());
        start();
    }

    void click()
    {
        platform.statusItem.handlers.clicked();
        settle();
    }

    [[nodiscard]] QString description() const { return platform.statusItem.appearances.back().description; }
};

QWidget* window(const QString& name)
{
    for (auto* const candidate : QApplication::topLevelWidgets()) {
        if (candidate->objectName() == name && candidate->isVisible())
            return candidate;
    }
    return nullptr;
}

QWidget* panel()
{
    return window(u"adPanel"_s);
}

QWidget* menu()
{
    return window(u"menuPanel"_s);
}

QPushButton* button(QWidget* in, const QString& name)
{
    return in->findChild<QPushButton*>(name);
}

qint64 secondsLeft()
{
    return panel()->findChild<CountdownGauge*>()->remaining();
}

bool isPaid()
{
    return panel()->findChild<QLabel*>(u"paid"_s) != nullptr;
}

} // namespace

class StatusBarControllerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theItemShowsADollarAndTheBalanceInItsDescription()
    {
        World world;

        world.start();

        QCOMPARE(world.platform.statusItem.appearances.front(),
            (StatusAppearance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $0.00 available"_s}));
        QCOMPARE(world.platform.statusItem.appearances.back(),
            (StatusAppearance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $6.37 available"_s}));
    }

    void anOfferTurnsTheItemGreen()
    {
        World world;

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
        World world;
        world.start();

        world.controller->updateStatusItem(title);

        QCOMPARE(world.platform.statusItem.appearances.back().text, u"$"_s);
        QCOMPARE(world.description(), u"Orvella · %1 available"_s.arg(title));
    }

    void aFailedRegistrationShowsInTheDescription()
    {
        World world;
        world.platform.secrets.remove(Keychain::kService, u"default"_s);
        world.transport.fail(endpoints::kRegister, u"No network."_s);

        world.start();

        QCOMPARE(world.description(), u"Orvella · OFF available"_s);
    }

    void theItemReceivesEveryTitleInOrderTheCurrentOneFirst()
    {
        World world;
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

    void aClickWithoutAnOfferOpensTheMenuAndNoAd()
    {
        World world;
        world.start();

        world.click();

        QVERIFY(menu());
        QVERIFY(!panel());
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 0);
    }

    void aViewThatIsClosedWhileItsVerdictIsUnderWayHasTheWalletAskedAfterTheNextPoll()
    {
        World world;
        world.startWithOffer();
        world.click();
        const auto verdict = world.transport.hold(endpoints::kSessionComplete);
        world.platform.clock.advance(15s);
        QVERIFY(verdict.isAwaited());
        const auto walletsBefore = world.transport.count(endpoints::kWallet);
        world.transport.answer(endpoints::kAdsAvailable, noOffer());

        button(panel(), u"close"_s)->click();
        settle();
        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore);
        world.platform.clock.advance(300s);

        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore + 1);
    }

    void aClickOpensTheOfferedAdAndItIsWatchedToPaid()
    {
        World world;
        world.startWithOffer();

        world.click();
        QVERIFY(panel());
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
        QVERIFY(panel());

        world.platform.clock.advance(3s);
        QVERIFY(!panel());
    }

    void aClickWhileThePanelIsShownDoesNothing()
    {
        World world;
        world.startWithOffer();
        world.click();

        world.click();

        QVERIFY(panel());
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 1);
    }

    void closingTheAdEarnsNothingAndRestsTheCreative()
    {
        World world;
        world.startWithOffer();
        world.click();
        const auto walletsBefore = world.transport.count(endpoints::kWallet);

        button(panel(), u"close"_s)->click();
        world.platform.clock.advance(1min);

        QVERIFY(!panel());
        QVERIFY(!world.controller->state().availableAd());
        QVERIFY(!world.controller->state().lastEarnedCents());
        QVERIFY(world.controller->state().isSuppressed(anAd()));
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
        QCOMPARE(world.transport.count(endpoints::kWallet), walletsBefore);
        QCOMPARE(world.description(), u"Orvella · $6.37 available"_s);
    }

    void aWindowManagerThatClosesThePanelDismissesTheAd()
    {
        World world;
        world.startWithOffer();
        world.click();

        panel()->close();
        world.platform.clock.advance(1min);

        QVERIFY(!panel());
        QVERIFY(world.controller->state().isSuppressed(anAd()));
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
    }

    void anAdThatEarnedNothingStillRefreshesTheWallet()
    {
        World world;
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
        World world;
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
        World world;
        world.startWithOffer();
        world.click();

        world.controller->state().availableAd = std::nullopt;
        settle();

        QVERIFY(panel());
    }

    void anotherAdOpensAfterTheFirstPanelHasClosed()
    {
        World world;
        world.startWithOffer();
        world.click();
        world.platform.clock.advance(18s);
        QVERIFY(!panel());
        auto other = anAd();
        other.creativeId = u"creative-2"_s;
        other.body = u"Salt & pepper"_s;
        world.controller->state().availableAd = other;

        world.click();

        QVERIFY(panel());
        QCOMPARE(button(panel(), u"openAd"_s)->accessibleName(), u"Open ad: Salt & pepper"_s);
    }

    void theAnonymousModeOfTheOpeningIsSent()
    {
        World world;
        world.platform.settings.values = {{u"anonymousMode"_s, false}};
        world.startWithOffer();

        world.click();

        QCOMPARE(world.transport.requests(endpoints::kSessionStart).front().body.at(u"anonymousMode"_s), Json(false));
    }

    void theMenuShowsWhatBecameOfTheLoginItemElsewhere()
    {
        World world;
        world.start();
        QVERIFY(world.controller->state().launchAtLogin());

        world.platform.loginItem.current = LoginItem::Status::requiresApproval;
        world.click();

        QVERIFY(menu());
        QVERIFY(!world.controller->state().launchAtLogin());
    }

    void aSecondClickClosesTheMenu()
    {
        World world;
        world.start();
        world.click();

        world.click();

        QVERIFY(!menu());
    }

    void aClickClosesTheMenuEvenWhenAnAdHasComeMeanwhile()
    {
        World world;
        world.start();
        world.click();
        world.controller->state().availableAd = anAd();

        world.click();

        QVERIFY(!menu());
        QVERIFY(!panel());
    }

    void theMenuOpensTheAdAndStays()
    {
        World world;
        world.start();
        world.click();
        world.controller->state().availableAd = anAd();
        settle();

        button(menu(), u"openAd"_s)->click();

        QVERIFY(panel());
        QVERIFY(menu());
    }

    void aClickWhileThePanelIsShownDoesNotEvenCloseTheMenu()
    {
        World world;
        world.start();
        world.click();
        world.controller->state().availableAd = anAd();
        settle();
        button(menu(), u"openAd"_s)->click();

        world.click();

        QVERIFY(panel());
        QVERIFY(menu());
    }

    void theMenusActionForAnOfferThatIsGoneShowsTheMenu()
    {
        World world;
        world.start();

        world.controller->showCurrentAd();

        QVERIFY(menu());
        QVERIFY(!panel());
    }

    void theUpdaterIsStartedOnceAndAskedByTheMenu()
    {
        World world;
        world.start();
        QCOMPARE(world.platform.updater.starts, 1);
        world.click();

        button(menu(), u"checkForUpdates"_s)->click();

        QCOMPARE(world.platform.updater.checks, 1);
        QCOMPARE(world.platform.updater.starts, 1);
    }

    void aPanelThatTheViewerOpensTakesTheKeyboard()
    {
        World world;
        world.startWithOffer();

        world.click();

        QCOMPARE(world.platform.windows.activated, std::vector {panel()->windowHandle()});
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
        World world;
        world.startWithOffer();
        world.click();
        world.platform.clock.advance(5s);

        world.controller.reset();
        settle();

        QVERIFY(!panel());
        QCOMPARE(world.platform.clock.sleepers(), 0U);
        QCOMPARE(world.transport.waiting(), 0);
    }
};

QTEST_MAIN(StatusBarControllerTest)

#include "StatusBarControllerTest.moc"
