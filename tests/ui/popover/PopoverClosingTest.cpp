#include "ui/popover/PopoverWorld.h"

#include <QApplication>
#include <QSignalSpy>
#include <QTest>

using namespace orvella;

using World = PopoverWorld;

namespace {

constexpr auto kStays = Popover::Behaviour::applicationDefined;

} // namespace

/// What closes a popover, and what does not.
class PopoverClosingTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void closedByTheProgramItIsGoneAndSaysSoOnce()
    {
        World world;
        const QSignalSpy closed(world.popover.get(), &Popover::closed);
        world.open();

        world.popover->performClose();
        world.popover->performClose();

        QVERIFY(!world.popover->isShown());
        QVERIFY(!world.popover->isVisible());
        QCOMPARE(closed.count(), 1);
        QCOMPARE(world.platform.windows.watches(), 0U);
    }

    void escapeClosesWhatIsTransient()
    {
        World world;
        world.open();

        QTest::keyClick(world.popover.get(), Qt::Key_Escape);

        QVERIFY(!world.popover->isShown());
    }

    void escapeOnlyTellsOfItselfInWhatStays()
    {
        World world(kStays);
        const QSignalSpy escaped(world.popover.get(), &Popover::escaped);
        world.open();

        QTest::keyClick(world.popover.get(), Qt::Key_Escape);

        QVERIFY(world.popover->isShown());
        QCOMPARE(escaped.count(), 1);
    }

    void aPressElsewhereClosesWhatIsTransient()
    {
        World world;
        world.open();

        world.platform.windows.press({10, 700});

        QVERIFY(!world.popover->isShown());
        QCOMPARE(world.platform.windows.watches(), 0U);
    }

    void aPressInItOrOnItsAnchorDoesNot_data()
    {
        QTest::addColumn<QPoint>("place");
        QTest::newRow("in the middle") << QPoint(400, 80);
        QTest::newRow("on the anchor") << QPoint(400, 14);
        QTest::newRow("in its last corner") << QPoint(549, 137);
    }

    void aPressInItOrOnItsAnchorDoesNot()
    {
        QFETCH(const QPoint, place);
        World world;
        world.open();

        world.platform.windows.press(place);

        QVERIFY(world.popover->isShown());
    }

    void aPressBesideTheLastClickOnTheItemIsOneOnTheItem()
    {
        World world;
        world.anchor = PopoverAnchor {QRect(400, 14, 1, 1), 2};
        world.open();

        world.platform.windows.press({416, 14});
        QVERIFY(world.popover->isShown());

        world.platform.windows.press({417, 14});
        QVERIFY(!world.popover->isShown());
    }

    void pressesDoNotMatterToWhatStays()
    {
        World world(kStays);
        world.open();

        QCOMPARE(world.platform.windows.watches(), 0U);
    }

    void anotherProgramsWindowThatTakesTheKeyboardClosesWhatIsTransient()
    {
        World world;
        world.open();
        QApplication::setActiveWindow(world.popover.get());

        QApplication::setActiveWindow(nullptr);

        QVERIFY(!world.popover->isShown());
    }

    void anotherWindowOfTheProgramDoesNot()
    {
        World world;
        QWidget other;
        other.show();
        world.open();
        QApplication::setActiveWindow(world.popover.get());

        QApplication::setActiveWindow(&other);

        QVERIFY(world.popover->isShown());
    }

    void losingTheKeyboardDoesNotMatterToWhatStays()
    {
        World world(kStays);
        world.open();
        QApplication::setActiveWindow(world.popover.get());

        QApplication::setActiveWindow(nullptr);

        QVERIFY(world.popover->isShown());
    }

    void aDesktopThatClosesWhatIsTransientClosesIt()
    {
        World world;
        world.open();

        world.popover->close();

        QVERIFY(!world.popover->isShown());
    }

    void aDesktopThatClosesWhatStaysOnlyAsks()
    {
        World world(kStays);
        const QSignalSpy asked(world.popover.get(), &Popover::closeRequested);
        world.open();

        world.popover->close();

        QVERIFY(world.popover->isShown());
        QVERIFY(world.popover->isVisible());
        QCOMPARE(asked.count(), 1);
    }
};

QTEST_MAIN(PopoverClosingTest)

#include "PopoverClosingTest.moc"
