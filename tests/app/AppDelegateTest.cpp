#include "app/AppDelegate.h"

#include "api/Endpoints.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Outcome.h"
#include "support/Samples.h"

#include <QAbstractButton>
#include <QApplication>
#include <QTest>

#include <algorithm>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

QList<QWidget*> launchWindows()
{
    QList<QWidget*> found;
    for (auto* const window : QApplication::topLevelWidgets()) {
        if (window->objectName() == u"launchWindow"_s)
            found.append(window);
    }
    return found;
}

bool isLaunchWindowShown()
{
    return !launchWindows().isEmpty() && launchWindows().first()->isVisible();
}

bool isShown(const QString& name)
{
    const auto windows = QApplication::topLevelWidgets();
    return std::ranges::any_of(
        windows, [&](const auto* window) { return window->objectName() == name && window->isVisible(); });
}

struct World {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppDelegate> delegate;

    World()
    {
        platform.secrets.put(Keychain::kService, "token");
        transport.answerEverything();
        delegate = std::make_unique<AppDelegate>(platform.lend(), transport);
    }

    void launch()
    {
        delegate->applicationDidFinishLaunching();
        settle();
    }
};

} // namespace

class AppDelegateTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theStartupWindowAppearsUnlessAStoredFalseForbidsIt_data()
    {
        QTest::addColumn<std::optional<Json>>("stored");
        QTest::addColumn<bool>("appears");
        QTest::newRow("a new viewer") << std::optional<Json>() << true;
        QTest::newRow("true") << std::optional(Json(true)) << true;
        QTest::newRow("false") << std::optional(Json(false)) << false;
        QTest::newRow("a string") << std::optional(Json(u"no"_s)) << true;
        QTest::newRow("a number") << std::optional(Json(qint64 {0})) << true;
    }

    void theStartupWindowAppearsUnlessAStoredFalseForbidsIt()
    {
        QFETCH(const std::optional<Json>, stored);
        QFETCH(const bool, appears);
        World world;
        if (stored)
            world.platform.settings.values = {{u"showLaunchWindowAtStartup"_s, *stored}};

        world.launch();

        QCOMPARE(isLaunchWindowShown(), appears);
    }

    void thePlaceOfTheItemIsSeededBeforeTheItemIsThere()
    {
        World world;
        world.platform.statusItem.placeIsASetting = true;

        world.launch();

        QCOMPARE(world.platform.settings.writes.first(), u"NSStatusItem Preferred Position OrvellaStatusItem"_s);
    }

    void theStateStartsByItself()
    {
        World world;

        world.launch();

        QVERIFY(world.transport.count(endpoints::kWallet) > 0);
    }

    void aReopenBeforeTheLaunchDoesNothing()
    {
        World world;

        QVERIFY(world.delegate->applicationShouldHandleReopen());

        QVERIFY(launchWindows().isEmpty());
        QVERIFY(!world.delegate->controller());
    }

    void aRequestBeforeTheLaunchDoesNothing()
    {
        World world;

        world.delegate->perform(Instance::Request::showSettings);
        world.delegate->perform(Instance::Request::openAd);

        QVERIFY(launchWindows().isEmpty());
        QVERIFY(!isShown(u"menuPanel"_s));
    }

    void theSettingsAreTheStartupWindow_data()
    {
        QTest::addColumn<Instance::Request>("request");
        QTest::newRow("settings") << Instance::Request::showSettings;
        QTest::newRow("reopening") << Instance::Request::reopen;
    }

    void theSettingsAreTheStartupWindow()
    {
        QFETCH(const Instance::Request, request);
        World world;
        world.platform.settings.values = {{u"showLaunchWindowAtStartup"_s, false}};
        world.launch();

        world.delegate->perform(request);
        settle();

        QVERIFY(isLaunchWindowShown());
        QVERIFY(!isShown(u"menuPanel"_s));
    }

    void aStartByTheSessionChangesNothingInTheRunningProgram()
    {
        World world;
        world.platform.settings.values = {{u"showLaunchWindowAtStartup"_s, false}};
        world.launch();

        world.delegate->perform(Instance::Request::nothing);
        settle();

        QVERIFY(launchWindows().isEmpty());
        QVERIFY(!isShown(u"menuPanel"_s));
    }

    void withoutAnOfferTheAdIsTheMenu()
    {
        World world;
        world.launch();

        world.delegate->perform(Instance::Request::openAd);
        settle();
        QVERIFY(isShown(u"menuPanel"_s));

        // It is no toggle.
        world.delegate->perform(Instance::Request::openAd);
        settle();
        QVERIFY(isShown(u"menuPanel"_s));
        QVERIFY(!isShown(u"adPanel"_s));
    }

    void theAdOnOfferOpensOnceAndIsBroughtToTheFrontAgain()
    {
        World world;
        world.platform.settings.values = {{u"showLaunchWindowAtStartup"_s, false}};
        world.launch();
        world.delegate->controller()->state().availableAd = anAd();

        world.delegate->perform(Instance::Request::openAd);
        settle();
        QVERIFY(isShown(u"adPanel"_s));
        QVERIFY(!isShown(u"menuPanel"_s));
        QCOMPARE(world.platform.windows.activated.size(), 1U);

        world.delegate->perform(Instance::Request::openAd);
        settle();
        QVERIFY(isShown(u"adPanel"_s));
        QVERIFY(!isShown(u"menuPanel"_s));
        QCOMPARE(world.platform.windows.activated.size(), 2U);
        QCOMPARE(world.platform.windows.activated.front(), world.platform.windows.activated.back());
    }

    void anAdThatFailsIsInTheReport()
    {
        World world;
        world.launch();
        world.transport.fail(endpoints::kSessionStart, u"No network for the ad."_s);

        world.delegate->controller()->showAd(anAd(), Popover::Keyboard::left);
        settle();

        const Outcome<QString> report(world.delegate->diagnosis());
        QVERIFY(report.isThere());
        QVERIFY2((*report).contains(u": No network for the ad.\n"_s), qUtf8Printable(*report));
    }

    void aReopenShowsTheWindowThatTheSettingHides()
    {
        World world;
        world.platform.settings.values = {{u"showLaunchWindowAtStartup"_s, false}};
        world.launch();

        QVERIFY(world.delegate->applicationShouldHandleReopen());
        settle();

        QVERIFY(isLaunchWindowShown());
        QVERIFY(!launchWindows().first()->findChild<QAbstractButton*>(u"showLaunchWindow"_s)->isChecked());
    }

    void aReopenBringsTheSameWindowToTheFront()
    {
        World world;
        world.launch();
        auto* const window = launchWindows().first();

        world.delegate->applicationShouldHandleReopen();
        window->close();
        world.delegate->applicationShouldHandleReopen();

        QCOMPARE(launchWindows(), QList {window});
        QVERIFY(window->isVisible());
        QCOMPARE(world.platform.windows.activated.size(), 3U);
    }

    void theWindowThatWasTurnedOffStaysAwayAtTheNextLaunchAndComesUncheckedOnReopening()
    {
        std::map<QString, Json> kept;
        {
            World world;
            world.launch();
            launchWindows().first()->findChild<QAbstractButton*>(u"showLaunchWindow"_s)->click();
            settle();
            kept = world.platform.settings.values;
        }
        World next;
        next.platform.settings.values = kept;

        next.launch();
        QVERIFY(!isLaunchWindowShown());

        next.delegate->applicationShouldHandleReopen();
        settle();
        QVERIFY(isLaunchWindowShown());
        QVERIFY(!launchWindows().first()->findChild<QAbstractButton*>(u"showLaunchWindow"_s)->isChecked());
    }

    void closingTheWindowLeavesTheProgramRunning()
    {
        World world;
        world.launch();

        launchWindows().first()->close();
        settle();

        QVERIFY(!isLaunchWindowShown());
        QVERIFY(world.delegate->controller());
        QVERIFY(!world.platform.statusItem.appearances.empty());
    }
};

QTEST_MAIN(AppDelegateTest)

#include "AppDelegateTest.moc"
