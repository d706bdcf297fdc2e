#include "api/Endpoints.h"
#include "app/AppDelegate.h"
#include "support/FakeMac.h"
#include "support/FakeTransport.h"
#include "support/Outcome.h"
#include "support/Samples.h"

#include <QApplication>
#include <QPushButton>
#include <QTest>
#include <QWindow>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr auto kTransient = CocoaPopover::Behaviour::transient;
constexpr auto kStays = CocoaPopover::Behaviour::applicationDefined;
const std::string kPosition = "NSStatusItem Preferred Position OrvellaStatusItem";

QWidget* widget(const QString& name)
{
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (window->objectName() == name && window->isVisible())
            return window;
    }
    return nullptr;
}

void* viewOf(const QWidget& widget)
{
    return reinterpret_cast<void*>(widget.windowHandle()->winId());
}

/// The whole program on a Mac, without its frameworks and the network.
struct World {
    FakeMac mac;
    FakeTransport transport;
    std::unique_ptr<AppDelegate> delegate;

    explicit World(std::map<std::string, PropertyValue> defaults = {{"showLaunchWindowAtStartup", 0.0}})
    {
        mac.defaults.values = std::move(defaults);
        mac.keychain.put({"orvella.device-token", "default", "token"});
        transport.answerEverything();
    }

    void launch()
    {
        delegate = std::make_unique<AppDelegate>(mac.lend(), transport);
        delegate->applicationDidFinishLaunching();
        mac.instance.watch([this](Instance::Request request) { delegate->perform(request); });
        // The keychain answers from another thread.
        QTRY_VERIFY(transport.count(endpoints::kAdsAvailable) > 0);
        settle();
    }

    void launchWithOffer()
    {
        transport.answer(endpoints::kAdsAvailable, anOffer());
        launch();
    }

    /// Until everything that it was asked so far is answered: it answers in the order of the questions.
    void waitForKeychain()
    {
        const Outcome last(mac.secrets.read(u"last"_s, u"question"_s, {}));
        QTRY_VERIFY(last.isThere());
        settle();
    }

    void click()
    {
        mac.menuBar.clicked();
        settle();
    }

    [[nodiscard]] FakeCocoaPopover* open(CocoaPopover::Behaviour behaviour)
    {
        for (auto* const popover : mac.menuBar.popovers) {
            if (popover->isShown() && popover->behaviour() == behaviour)
                return popover;
        }
        return nullptr;
    }

    [[nodiscard]] std::string description() const { return mac.menuBar.appearances.back().description; }
};

} // namespace

/// The shared controller, guard and popovers over the services of a Mac.
class MacControllerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePlaceIsSeededBeforeTheItemIsMade()
    {
        World world;
        std::optional<double> position;
        world.mac.menuBar.onShow = [&] {
            const auto value = world.mac.defaults.value(kPosition);
            if (const auto* const number = std::get_if<double>(&value))
                position = *number;
        };

        world.launch();

        QCOMPARE(position, 140.0);
        QCOMPARE(asBoolean(world.mac.defaults.values.at("NSStatusItem Visible OrvellaStatusItem")), true);
    }

    void aPlaceThatTheViewerChoseIsLeftAlone()
    {
        World world({{"showLaunchWindowAtStartup", 0.0}, {kPosition, 512.5}});

        world.launch();

        QCOMPARE(std::get<double>(world.mac.defaults.values.at(kPosition)), 512.5);
    }

    void theItemHasItsTextAsSoonAsItIsThere()
    {
        World world;
        AppDelegate delegate(world.mac.lend(), world.transport);

        delegate.applicationDidFinishLaunching();

        QCOMPARE(world.mac.menuBar.appearances.size(), 1U);
        QCOMPARE(world.description(), "Orvella · $0.00 available");
    }

    void theItemHasTheTextAndTheLengthOfItsState()
    {
        World world;
        world.launch();
        QCOMPARE(world.mac.menuBar.appearances.back().text, "$");
        QCOMPARE(world.mac.menuBar.appearances.back().length, 18);
        QVERIFY(!world.mac.menuBar.appearances.back().isGreen);
        QCOMPARE(world.description(), "Orvella · US$6.37 available");

        world.delegate->controller()->updateStatusItem(u"AD"_s);

        QCOMPARE(world.mac.menuBar.appearances.back().text, "$ AD");
        QCOMPARE(world.mac.menuBar.appearances.back().length, 42);
        QVERIFY(world.mac.menuBar.appearances.back().isGreen);
        QCOMPARE(world.description(), "Orvella · ad ready");
    }

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
        QCOMPARE(menu->shown.view, viewOf(*widget(u"menuPanel"_s)));
        QVERIFY(world.mac.cocoaApplication.activations > 0);

        world.click();
        QVERIFY(!menu->isShown());
        QVERIFY(!widget(u"menuPanel"_s));
    }

    void theMenuIsMadeOnceAndOpensAgainAfterTheSystemClosedIt()
    {
        World world;
        world.launch();
        world.click();
        auto* const menu = world.open(kTransient);

        menu->performClose();
        QVERIFY(!widget(u"menuPanel"_s));
        world.click();

        QCOMPARE(world.open(kTransient), menu);
        QCOMPARE(menu->openings, 2);
        QVERIFY(widget(u"menuPanel"_s));
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
        QCOMPARE(panel->shown.view, viewOf(*widget(u"adPanel"_s)));
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

        widget(u"adPanel"_s)->findChild<QPushButton*>(u"openAd"_s)->click();
        world.waitForKeychain();
        QCOMPARE(world.mac.workspace.opened, std::vector {aClick().targetUrl.toStdString()});
        panel->performClose();
        world.mac.clock.advance(249ms);
        QVERIFY(!panel->isShown());
        world.mac.clock.advance(1ms);

        QVERIFY(panel->isShown());
        QVERIFY(widget(u"adPanel"_s));
    }

    void aDismissedPanelDoesNotComeBack()
    {
        World world;
        world.launchWithOffer();
        world.click();

        widget(u"adPanel"_s)->findChild<QPushButton*>(u"close"_s)->click();
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
        auto* const panel = widget(u"adPanel"_s);
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
        auto* const panel = widget(u"adPanel"_s);
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
        QVERIFY(widget(u"menuPanel"_s));

        world.click();
        menu->finishClosing();
        QVERIFY(!widget(u"menuPanel"_s));
    }

    void withoutAButtonNothingIsShownAndNoSessionBegins()
    {
        World world;
        world.mac.menuBar.hasRoom = false;
        world.launchWithOffer();

        world.delegate->controller()->showCurrentAd();
        world.waitForKeychain();

        QVERIFY(!world.open(kStays));
        QVERIFY(!widget(u"adPanel"_s));
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 0);
    }

    void anAdOpensByItselfWithoutTheKeyboard()
    {
        World world({{"showLaunchWindowAtStartup", 0.0}, {"autoOpenAds", 1.0}});

        world.launchWithOffer();

        QVERIFY(world.open(kStays));
        QCOMPARE(world.mac.cocoaApplication.activations, 0);
    }

    void noAdOpensByItselfOverALockedOrCoveredScreen_data()
    {
        QTest::addColumn<bool>("isLocked");
        QTest::newRow("locked") << true;
        QTest::newRow("covered") << false;
    }

    void noAdOpensByItselfOverALockedOrCoveredScreen()
    {
        QFETCH(const bool, isLocked);
        World world({{"showLaunchWindowAtStartup", 0.0}, {"autoOpenAds", 1.0}});
        if (isLocked) {
            world.mac.windowServer.lock = 1.0;
        } else {
            world.mac.windowServer.front = 42;
            world.mac.windowServer.onScreen = {{42, 0, CocoaForeground::Size {1440, 900}}};
        }

        world.launchWithOffer();

        QVERIFY(!world.open(kStays));
        QCOMPARE(world.description(), "Orvella · ad ready");
    }

    void aReopeningBringsTheStartupWindow()
    {
        World world;
        world.launch();
        QVERIFY(!widget(u"launchWindow"_s));

        world.mac.cocoaApplication.reopened();
        settle();

        QVERIFY(widget(u"launchWindow"_s));
        QVERIFY(world.mac.cocoaApplication.activations > 0);
    }

    void theStartupWindowIsThereUnlessAStoredFalseForbidsIt_data()
    {
        QTest::addColumn<PropertyValue>("stored");
        QTest::addColumn<bool>("isShown");
        QTest::newRow("missing") << PropertyValue() << true;
        QTest::newRow("true") << PropertyValue(1.0) << true;
        QTest::newRow("a text") << PropertyValue("no") << true;
        QTest::newRow("false") << PropertyValue(0.0) << false;
    }

    void theStartupWindowIsThereUnlessAStoredFalseForbidsIt()
    {
        QFETCH(const PropertyValue, stored);
        QFETCH(const bool, isShown);
        World world({{"showLaunchWindowAtStartup", stored}});

        world.launch();

        QCOMPARE(widget(u"launchWindow"_s) != nullptr, isShown);
    }

    void theLoginItemIsRegisteredOnceEver()
    {
        World world;
        world.launch();
        QCOMPARE(world.mac.cocoaLoginItem.registrations, 1);
        QVERIFY(world.delegate->controller()->state().launchAtLogin());

        world.delegate.reset();
        world.transport.forgetRequests();
        world.launch();

        QCOMPARE(world.mac.cocoaLoginItem.registrations, 1);
    }

    void theUpdaterIsStartedAndAskedFromTheMenu()
    {
        World world;
        world.launch();
        QCOMPARE(world.mac.framework.starts, 1);

        world.click();
        widget(u"menuPanel"_s)->findChild<QPushButton*>(u"checkForUpdates"_s)->click();

        QCOMPARE(world.mac.framework.checks, 1);
    }
};

QTEST_MAIN(MacControllerTest)

#include "MacControllerTest.moc"
