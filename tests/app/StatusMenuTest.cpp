#include "api/Endpoints.h"
#include "app/StatusBarController.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "support/ShownWindow.h"

#include <QAction>
#include <QApplication>
#include <QTest>

using namespace orvella;
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
        controller = std::make_unique<StatusBarController>(platform.lend(), transport);
        settle();
    }

    void offer()
    {
        controller->state().availableAd = anAd();
        settle();
    }

    StatusMenu* ask()
    {
        platform.statusItem.handlers.menuRequested({20, 20});
        return qobject_cast<StatusMenu*>(shownWindow(u"statusMenu"_s));
    }

    void choose(const QString& name)
    {
        auto* const menu = ask();
        QVERIFY(menu);
        auto* const entry = menu->findChild<QAction*>(name);
        QVERIFY2(entry, qPrintable(name));
        entry->trigger();
        menu->close();
        settle();
    }
};

QStringList entries(const QMenu& menu)
{
    QStringList names;
    for (const auto* const action : menu.actions())
        names.append(action->isSeparator() ? u"-"_s : action->objectName());
    return names;
}

} // namespace

class StatusMenuTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itLeadsToEverythingAndOut()
    {
        World world;

        const auto* const menu = world.ask();

        QVERIFY(menu);
        QCOMPARE(entries(*menu), (QStringList {u"showMenuPopover"_s, u"showLaunchWindow"_s, u"-"_s, u"quit"_s}));
        QCOMPARE(menu->actions().last()->text(), u"Quit Orvella"_s);
    }

    void anOfferStandsFirst()
    {
        World world;
        world.offer();

        const auto* const menu = world.ask();

        QCOMPARE(entries(*menu).first(), u"showAd"_s);
        QCOMPARE(menu->actions().first()->text(), u"Open ad"_s);
    }

    void theAdOpens()
    {
        World world;
        world.offer();

        world.choose(u"showAd"_s);

        QVERIFY(shownWindow(u"adPanel"_s));
    }

    void anAdOnTheScreenIsGivenTheKeyboard()
    {
        World world;
        world.controller->state().autoOpenAds = true;
        world.offer();
        QVERIFY(shownWindow(u"adPanel"_s));
        QVERIFY(world.platform.windows.activated.empty());

        world.choose(u"showAd"_s);

        QCOMPARE(world.platform.windows.activated, std::vector {shownWindow(u"adPanel"_s)->windowHandle()});
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 1);
    }

    void theMenuPopoverOpensEvenWhileAnAdIsOnOffer()
    {
        World world;
        world.offer();

        world.choose(u"showMenuPopover"_s);

        QVERIFY(shownWindow(u"menuPanel"_s));
        QVERIFY(!shownWindow(u"adPanel"_s));
    }

    void theStartupWindowOpens()
    {
        World world;

        world.choose(u"showLaunchWindow"_s);

        QVERIFY(shownWindow(u"launchWindow"_s));
    }

    void theProgramQuits()
    {
        World world;

        QMetaObject::invokeMethod(qApp, [&world] { world.choose(u"quit"_s); }, Qt::QueuedConnection);

        QCOMPARE(QApplication::exec(), 0);
    }

    void theProgramQuitsAtOnceWhileAnAdAndTheMenuAreShownAndTheAdIsNotDismissed()
    {
        World world;
        world.platform.statusItem.handlers.clicked();
        world.controller->state().autoOpenAds = true;
        world.offer();
        QVERIFY(shownWindow(u"adPanel"_s));
        QVERIFY(shownWindow(u"menuPanel"_s));

        QMetaObject::invokeMethod(qApp, [&world] { world.choose(u"quit"_s); }, Qt::QueuedConnection);

        QCOMPARE(QApplication::exec(), 0);
        QVERIFY(!world.controller->state().isSuppressed(anAd()));
    }
};

QTEST_MAIN(StatusMenuTest)

#include "StatusMenuTest.moc"
