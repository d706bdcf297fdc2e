#include "app/StatusBarController.h"

#include "api/Endpoints.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QApplication>
#include <QLabel>
#include <QPushButton>
#include <QScreen>
#include <QTest>
#include <QToolButton>

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
        platform.statusItem.click();
        settle();
    }

    [[nodiscard]] QString description() const { return platform.statusItem.appearances.back().description; }
};

QWidget* panel()
{
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"adPanel"_s && window->isVisible())
            return window;
    }
    return nullptr;
}

QString labelText(const QString& name)
{
    return panel()->findChild<QLabel*>(name)->text();
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

    void aClickWithoutAnOfferOpensNoAd()
    {
        World world;
        world.start();

        world.click();

        QVERIFY(!panel());
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 0);
    }

    void aClickOpensTheOfferedAdAndItIsWatchedToPaid()
    {
        World world;
        world.startWithOffer();

        world.click();
        QVERIFY(panel());
        QCOMPARE(panel()->findChild<QPushButton*>(u"openAd"_s)->text(), anAd().body);
        QCOMPARE(labelText(u"progress"_s), u"15 s"_s);
        QCOMPARE(labelText(u"earnings"_s), u"12 cent"_s);

        world.platform.clock.advance(8s);
        QCOMPARE(labelText(u"progress"_s), u"7 s"_s);

        const auto walletsBefore = world.transport.count(endpoints::kWallet);
        auto wallet = aWallet();
        wallet.wallet.availableCents = 649;
        world.transport.answer(endpoints::kWallet, wallet);
        world.platform.clock.advance(7s);
        QCOMPARE(labelText(u"progress"_s), u"Paid"_s);
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
        QCOMPARE(panel()->findChild<QToolButton*>(u"close"_s)->toolTip(), u"Dismiss without earning"_s);

        panel()->findChild<QToolButton*>(u"close"_s)->click();
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
        QCOMPARE(world.platform.clock.sleepers(), 1U);
    }

    void thePanelOpensUnderTheClickAndStaysInTheWorkArea_data()
    {
        QTest::addColumn<std::optional<QPoint>>("click");
        QTest::newRow("unknown") << std::optional<QPoint>();
        QTest::newRow("in the middle") << std::optional(QPoint(400, 10));
        QTest::newRow("at the left end") << std::optional(QPoint(1, 1));
        QTest::newRow("at the lower right end") << std::optional(QPoint(799, 799));
    }

    void thePanelOpensUnderTheClickAndStaysInTheWorkArea()
    {
        QFETCH(std::optional<QPoint>, click);
        World world;
        world.platform.statusItem.clickedAt = click;
        world.startWithOffer();

        world.click();

        const auto area = QGuiApplication::primaryScreen()->availableGeometry();
        const auto place = panel()->geometry();
        QVERIFY(area.contains(place));
        QCOMPARE(place.height() >= 44, true);
        if (!click)
            QCOMPARE(place.right(), area.right() - 8);
        else if (*click == QPoint(400, 10))
            QVERIFY(std::abs(place.center().x() - click->x()) <= 1);
    }

    void theWidthOfThePanelIsBounded_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<int>("expected");
        QTest::newRow("short") << u"Hi"_s << 260;
        QTest::newRow("long") << u"A long line of words. "_s.repeated(40) << 640;
    }

    void theWidthOfThePanelIsBounded()
    {
        QFETCH(QString, body);
        QFETCH(int, expected);
        World world;
        auto offer = anOffer();
        offer.ad->body = body;
        world.transport.answer(endpoints::kAdsAvailable, offer);
        world.start();

        world.click();

        QCOMPARE(panel()->width(), expected);
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
        QCOMPARE(panel()->findChild<QPushButton*>(u"openAd"_s)->text(), u"Salt && pepper"_s);
        QCOMPARE(panel()->findChild<QPushButton*>(u"openAd"_s)->accessibleName(), u"Open ad: Salt & pepper"_s);
    }

    void theAnonymousModeOfTheOpeningIsSent()
    {
        World world;
        world.platform.settings.values = {{u"anonymousMode"_s, false}};
        world.startWithOffer();

        world.click();

        QCOMPARE(world.transport.requests(endpoints::kSessionStart).front().body.at(u"anonymousMode"_s), Json(false));
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
