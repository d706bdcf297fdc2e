#include "api/Endpoints.h"
#include "app/StatusBarWorld.h"

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

} // namespace

/// The menu that the status item opens and closes.
class MenuOfItemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aClickWithoutAnOfferOpensTheMenuAndNoAd()
    {
        StatusBarWorld world;
        world.start();

        world.click();

        QVERIFY(StatusBarWorld::menu());
        QVERIFY(!StatusBarWorld::panel());
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 0);
    }

    void theMenuShowsWhatBecameOfTheLoginItemElsewhere()
    {
        StatusBarWorld world;
        world.start();
        QVERIFY(world.controller->state().launchAtLogin());

        world.platform.loginItem.current = LoginItem::Status::requiresApproval;
        world.click();

        QVERIFY(StatusBarWorld::menu());
        QVERIFY(!world.controller->state().launchAtLogin());
    }

    void aSecondClickClosesTheMenu()
    {
        StatusBarWorld world;
        world.start();
        world.click();

        world.click();

        QVERIFY(!StatusBarWorld::menu());
    }

    void aClickClosesTheMenuEvenWhenAnAdHasComeMeanwhile()
    {
        StatusBarWorld world;
        world.start();
        world.click();
        world.controller->state().availableAd = anAd();

        world.click();

        QVERIFY(!StatusBarWorld::menu());
        QVERIFY(!StatusBarWorld::panel());
    }

    void theMenuOpensTheAdAndStays()
    {
        StatusBarWorld world;
        world.start();
        world.click();
        world.controller->state().availableAd = anAd();
        settle();

        button(StatusBarWorld::menu(), u"openAd"_s)->click();

        QVERIFY(StatusBarWorld::panel());
        QVERIFY(StatusBarWorld::menu());
    }

    void aClickWhileThePanelIsShownDoesNotEvenCloseTheMenu()
    {
        StatusBarWorld world;
        world.start();
        world.click();
        world.controller->state().availableAd = anAd();
        settle();
        button(StatusBarWorld::menu(), u"openAd"_s)->click();

        world.click();

        QVERIFY(StatusBarWorld::panel());
        QVERIFY(StatusBarWorld::menu());
    }

    void theMenusActionForAnOfferThatIsGoneShowsTheMenu()
    {
        StatusBarWorld world;
        world.start();

        world.controller->showCurrentAd();

        QVERIFY(StatusBarWorld::menu());
        QVERIFY(!StatusBarWorld::panel());
    }

    void theUpdaterIsStartedOnceAndAskedByTheMenu()
    {
        StatusBarWorld world;
        world.start();
        QCOMPARE(world.platform.updater.starts, 1);
        world.click();

        button(StatusBarWorld::menu(), u"checkForUpdates"_s)->click();

        QCOMPARE(world.platform.updater.checks, 1);
        QCOMPARE(world.platform.updater.starts, 1);
    }
};

QTEST_MAIN(MenuOfItemTest)

#include "MenuOfItemTest.moc"
