#include "platform/macos/MacWorld.h"

#include <QPushButton>
#include <QTest>
#include <QWindow>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

using World = MacWorld;

namespace {

constexpr auto kTransient = CocoaPopover::Behaviour::transient;
constexpr auto kStays = CocoaPopover::Behaviour::applicationDefined;

void* viewOf(const QWidget& widget)
{
    return reinterpret_cast<void*>(widget.windowHandle()->winId());
}

} // namespace

/// The shared menu, ad and disclosure in the popovers of a Mac.
class MacPopoversTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aClickOpensTheMenuAndAnotherClosesIt()
    {
        World world;
        world.launch();

        world.click();
        auto* const menu = world.open(kTransient);
        QVERIFY(menu);
        QVERIFY(!menu->below);
        QCOMPARE(menu->shown.width, 340);
        QCOMPARE(menu->shown.height, 540);
        QCOMPARE(menu->shown.view, viewOf(*shownWindow(u"menuPanel"_s)));
        QVERIFY(world.mac.cocoaApplication.activations > 0);

        world.click();
        QVERIFY(!menu->isShown());
        QVERIFY(!shownWindow(u"menuPanel"_s));
    }

    void theMenuIsMadeOnceAndOpensAgainAfterTheSystemClosedIt()
    {
        World world;
        world.launch();
        world.click();
        auto* const menu = world.open(kTransient);

        menu->performClose();
        QVERIFY(!shownWindow(u"menuPanel"_s));
        world.click();

        QCOMPARE(world.open(kTransient), menu);
        QCOMPARE(menu->openings, 2);
        QVERIFY(shownWindow(u"menuPanel"_s));
    }

    void aClickOpensTheAdOnOfferInAPanelThatStays()
    {
        World world;
        world.launchWithOffer();

        world.click();

        auto* const panel = world.open(kStays);
        QVERIFY(panel);
        QVERIFY(!panel->below);
        QCOMPARE(panel->shown.height, 44);
        QVERIFY(panel->shown.width >= 260 && panel->shown.width <= 640);
        QCOMPARE(panel->shown.view, viewOf(*shownWindow(u"adPanel"_s)));
        QVERIFY(!world.open(kTransient));
    }

    void clicksDoNothingWhileAnAdIsShown()
    {
        World world;
        world.launchWithOffer();
        world.click();

        world.click();
        world.waitForKeychain();

        QVERIFY(world.open(kStays));
        QVERIFY(!world.open(kTransient));
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 1);
    }

    void anAdIsPaidAndItsPanelCloses()
    {
        World world;
        world.launchWithOffer();
        world.click();

        world.waitForKeychain();
        for (int second = 0; second < anAd().requiredSeconds; ++second)
            world.mac.clock.advance(1s);
        world.waitForKeychain();
        QVERIFY(world.open(kStays));
        world.mac.clock.advance(3s);

        QVERIFY(!world.open(kStays));
        QCOMPARE(world.delegate->controller()->state().lastEarnedCents(), 12.5);
    }

    void thePanelComesBackAfterTheBrowserCameToTheFront()
    {
        World world;
        world.launchWithOffer();
        world.click();
        world.waitForKeychain();
        auto* const panel = world.open(kStays);

        shownWindow(u"adPanel"_s)->findChild<QPushButton*>(u"openAd"_s)->click();
        world.waitForKeychain();
        QCOMPARE(world.mac.workspace.opened, std::vector {aClick().targetUrl.toStdString()});
        panel->performClose();
        world.mac.clock.advance(249ms);
        QVERIFY(!panel->isShown());
        world.mac.clock.advance(1ms);

        QVERIFY(panel->isShown());
        QVERIFY(shownWindow(u"adPanel"_s));
    }

    void aDismissedPanelDoesNotComeBack()
    {
        World world;
        world.launchWithOffer();
        world.click();

        shownWindow(u"adPanel"_s)->findChild<QPushButton*>(u"close"_s)->click();
        settle();
        world.mac.clock.advance(1s);

        QVERIFY(!world.open(kStays));
        QVERIFY(!world.delegate->controller()->state().availableAd());
    }

    void theDisclosureHangsFromItsButton()
    {
        World world;
        world.launchWithOffer();
        world.click();
        auto* const panel = shownWindow(u"adPanel"_s);
        auto* const button = panel->findChild<QPushButton*>(u"adInformation"_s);

        button->click();
        settle();

        auto* const disclosure = world.open(kTransient);
        QVERIFY(disclosure);
        QVERIFY(disclosure->below);
        QCOMPARE(disclosure->below->view, viewOf(*panel));
        const auto place = button->mapTo(panel, QPoint());
        QCOMPARE(disclosure->below->left, place.x());
        QCOMPARE(disclosure->below->top, place.y());
        QCOMPARE(disclosure->below->width, button->width());
        QCOMPARE(disclosure->below->height, button->height());

        disclosure->performClose();
        settle();
        button->click();
        settle();
        QVERIFY(world.open(kTransient));
    }

    void thePanelClosesWhileItsDisclosureIsOnItsWayOut()
    {
        World world;
        world.mac.menuBar.hasMotion = true;
        world.launchWithOffer();
        world.click();
        auto* const panel = shownWindow(u"adPanel"_s);
        panel->findChild<QPushButton*>(u"adInformation"_s)->click();
        settle();
        QVERIFY(world.open(kTransient));

        panel->findChild<QPushButton*>(u"close"_s)->click();
        settle();

        QVERIFY(!world.open(kTransient));
        QVERIFY(!world.open(kStays));
        world.click();
        QVERIFY(world.open(kTransient));
    }

    void aMenuThatOpensAgainBeforeItHasGoneIsNotEmpty()
    {
        World world;
        world.mac.menuBar.hasMotion = true;
        world.launch();
        world.click();
        auto* const menu = world.open(kTransient);

        world.click();
        QVERIFY(!menu->isShown());
        world.click();
        menu->finishClosing();
        settle();
        QVERIFY(menu->isShown());
        QVERIFY(shownWindow(u"menuPanel"_s));

        world.click();
        menu->finishClosing();
        QVERIFY(!shownWindow(u"menuPanel"_s));
    }

    void withoutAButtonNothingIsShownAndNoSessionBegins()
    {
        World world;
        world.mac.menuBar.hasRoom = false;
        world.launchWithOffer();

        world.delegate->controller()->showCurrentAd();
        world.waitForKeychain();

        QVERIFY(!world.open(kStays));
        QVERIFY(!shownWindow(u"adPanel"_s));
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 0);
    }
};

QTEST_MAIN(MacPopoversTest)

#include "MacPopoversTest.moc"
