#include "platform/macos/MacWorld.h"

#include <QPushButton>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

using World = MacWorld;

namespace {

constexpr auto kStays = CocoaPopover::Behaviour::applicationDefined;
const std::string kPosition = "NSStatusItem Preferred Position OrvellaStatusItem";

} // namespace

/// The shared controller and guard over the services of a Mac.
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
        QVERIFY(!shownWindow(u"launchWindow"_s));

        world.mac.cocoaApplication.reopened();
        settle();

        QVERIFY(shownWindow(u"launchWindow"_s));
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

        QCOMPARE(shownWindow(u"launchWindow"_s) != nullptr, isShown);
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
        shownWindow(u"menuPanel"_s)->findChild<QPushButton*>(u"checkForUpdates"_s)->click();

        QCOMPARE(world.mac.framework.checks, 1);
    }
};

QTEST_MAIN(MacControllerTest)

#include "MacControllerTest.moc"
