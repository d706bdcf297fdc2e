#include "ui/popover/PopoverWorld.h"
#include "ui/popover/Shadow.h"

#include <QApplication>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

using World = PopoverWorld;

namespace {

constexpr auto kStays = Popover::Behaviour::applicationDefined;

} // namespace

class PopoverTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itHangsFromItsAnchor()
    {
        World world;

        world.open();

        QVERIFY(world.popover->isShown());
        QVERIFY(world.popover->isVisible());
        QCOMPARE(world.popover->contentRect(), QRect(250, 38, 300, 100));
    }

    void withACompositorTheWindowHasRoomForTheShadow()
    {
        World world(kStays, true);

        world.open();

        QCOMPARE(world.popover->geometry(), QRect(250, 38, 300, 100).marginsAdded(kShadowMargins));
        QVERIFY(world.popover->testAttribute(Qt::WA_TranslucentBackground));
        QVERIFY(world.popover->mask().isEmpty());
    }

    void theShadowLetsThePointerThrough()
    {
        World world(kStays, true);

        world.open();

        const auto& region = world.platform.windows.inputRegion;
        QVERIFY(region.contains(QPoint(kShadowMargins.left() + 150, kShadowMargins.top() + 50)));
        QVERIFY(!region.contains(QPoint(5, 50)));
        QVERIFY(!region.contains(QPoint(kShadowMargins.left() + 150, kShadowMargins.top() + 110)));
    }

    void withoutACompositorTheWindowIsCutToTheShape()
    {
        World world;

        world.open();

        QVERIFY(!world.popover->testAttribute(Qt::WA_TranslucentBackground));
        const auto mask = world.popover->mask();
        // The tip of the arrow and the content are in it, what is beside the arrow is not.
        QVERIFY(mask.contains(QPoint(151, 5)));
        QVERIFY(mask.contains(QPoint(2, 50)));
        QVERIFY(!mask.contains(QPoint(20, 3)));
    }

    void aDesktopThatPlacesWindowsItselfGetsAnOrdinaryOne()
    {
        World world;
        world.platform.windows.places = false;

        world.open();

        QCOMPARE(world.popover->size(), QSize(300, 100));
        QVERIFY(!world.popover->windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(world.popover->windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QCOMPARE(world.popover->windowTitle(), u"Orvella"_s);
    }

    void openingItTwiceIsOpeningItOnce()
    {
        World world;
        world.open();

        world.open();

        QCOMPARE(world.platform.windows.activated.size(), 1U);
        QCOMPARE(world.platform.windows.watches(), 1U);
    }

    void itOpensAgain()
    {
        World world;
        world.open();
        world.popover->performClose();
        world.anchor = PopoverAnchor {QRect(300, 0, 1, 28), 2};

        world.open();

        QCOMPARE(world.popover->contentRect().topLeft(), QPoint(150, 38));
    }

    void withoutTheKeyboardItNeitherActivatesNorReactsToKeys()
    {
        World world(kStays);
        const QSignalSpy clicks(world.button, &QPushButton::clicked);

        world.open(Popover::Keyboard::left);
        QTest::keyClick(world.popover.get(), Qt::Key_Return);
        QTest::keyClick(world.popover.get(), Qt::Key_Space);

        QVERIFY(world.platform.windows.activated.empty());
        QVERIFY(world.popover->testAttribute(Qt::WA_ShowWithoutActivating));
        QCOMPARE(clicks.count(), 0);
    }

    void withTheKeyboardNothingInItHasItUntilTheViewerTabsOn()
    {
        World world;
        world.open();
        QApplication::setActiveWindow(world.popover.get());
        QVERIFY(!world.button->hasFocus());

        QTest::keyClick(world.popover.get(), Qt::Key_Tab);

        QVERIFY(world.button->hasFocus());
    }

    void whatFadesAwayTakesNoClicksAndOpensAgainAsNew()
    {
        World world(kStays, true);
        world.platform.look.motionReduced = false;
        const QSignalSpy clicks(world.button, &QPushButton::clicked);
        world.open();
        QTRY_COMPARE(world.popover->windowOpacity(), 1.0);

        world.popover->performClose();
        QVERIFY(world.popover->isVisible());
        auto* const content = world.button->parentWidget();
        QVERIFY(content->testAttribute(Qt::WA_TransparentForMouseEvents));

        world.open();
        QVERIFY(!content->testAttribute(Qt::WA_TransparentForMouseEvents));
        QTRY_COMPARE(world.popover->windowOpacity(), 1.0);
        QVERIFY(world.popover->isVisible());
        QVERIFY(world.popover->isShown());
    }

    void aCompositorThatComesOrGoesIsReckonedWithAtTheNextOpening()
    {
        World world;
        world.open();
        world.popover->performClose();
        world.platform.windows.composites = true;

        world.open();
        QVERIFY(world.popover->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(world.popover->geometry(), QRect(250, 38, 300, 100).marginsAdded(kShadowMargins));

        world.popover->performClose();
        world.platform.windows.composites = false;
        world.open();
        QVERIFY(!world.popover->testAttribute(Qt::WA_TranslucentBackground));
        QCOMPARE(world.popover->size(), QSize(302, 110));
    }

    void itFollowsALookThatChanges()
    {
        World world;
        world.open();
        world.anchor = PopoverAnchor {QRect(300, 0, 1, 28), 2};

        world.platform.look.changed();

        QCOMPARE(world.popover->contentRect().topLeft(), QPoint(150, 38));
    }

    void itFollowsAScreenThatChanges()
    {
        World world;
        world.open();
        world.anchor = std::nullopt;

        Q_EMIT QGuiApplication::primaryScreen()->availableGeometryChanged({});

        const auto area = QGuiApplication::primaryScreen()->availableGeometry();
        QCOMPARE(world.popover->contentRect().topRight() + QPoint(1, 0), QPoint(area.right() + 1 - 8, 8));
    }

    void itLeavesNothingBehind()
    {
        World world;
        world.open();

        world.popover.reset();

        QCOMPARE(world.platform.windows.watches(), 0U);
        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }
};

QTEST_MAIN(PopoverTest)

#include "PopoverTest.moc"
