#include "ui/popover/PopoverPlacement.h"

#include <QTest>

using namespace orvella;

namespace {

constexpr QSize kSize(340, 540);
/// A bar of 28 points above, one of 40 points below.
const ScreenArea kTopBar {{0, 0, 1280, 800}, {0, 28, 1280, 772}};
const ScreenArea kBottomBar {{0, 0, 1280, 800}, {0, 0, 1280, 760}};
const ScreenArea kLeftBar {{0, 0, 1280, 800}, {48, 0, 1232, 800}};
const ScreenArea kSecond {{1280, 0, 1024, 768}, {1280, 28, 1024, 740}};

PopoverPlace place(const ScreenArea& screen, const std::optional<QRect>& item, QSize size = kSize,
    Qt::LayoutDirection direction = Qt::LeftToRight)
{
    const auto anchor = item ? std::optional(PopoverAnchor {*item, 2}) : std::nullopt;
    return placePopover(size, anchor, {screen, kSecond}, screen, direction);
}

} // namespace

class PopoverPlacementTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void underABarTheTipIsTwoPointsBelowIt()
    {
        const auto found = place(kTopBar, QRect(600, 14, 1, 1));

        QCOMPARE(found.corner, QPoint(430, 28 + 2 + kArrowHeight));
        QCOMPARE(found.bubble.arrow, Bubble::Arrow::up);
        QCOMPARE(found.bubble.arrowCentre, 170);
    }

    void overABarTheTipIsTwoPointsAboveIt()
    {
        const auto found = place(kBottomBar, QRect(600, 780, 1, 1));

        QCOMPARE(found.corner, QPoint(430, 760 - 2 - kArrowHeight - kSize.height()));
        QCOMPARE(found.bubble.arrow, Bubble::Arrow::down);
    }

    void anItemThatReachesOutOfItsBarIsNotCovered()
    {
        const auto found = place(kTopBar, QRect(600, 2, 24, 40));

        QCOMPARE(found.corner.y(), 42 + 2 + kArrowHeight);
        QCOMPARE(found.corner.x() + found.bubble.arrowCentre, 612);
    }

    void atTheEndOfTheBarItStaysEightPointsOnTheScreenAndTheArrowStaysAtTheItem()
    {
        const auto found = place(kTopBar, QRect(1200, 14, 1, 1));

        QCOMPARE(found.corner.x(), 1280 - 8 - kSize.width());
        QCOMPARE(found.corner.x() + found.bubble.arrowCentre, 1200);
    }

    void theArrowKeepsAwayFromTheCorners_data()
    {
        QTest::addColumn<int>("item");
        QTest::addColumn<int>("arrow");
        QTest::newRow("right end") << 1279 << kSize.width() - 24;
        QTest::newRow("left end") << 0 << 24;
    }

    void theArrowKeepsAwayFromTheCorners()
    {
        QFETCH(const int, item);
        QFETCH(const int, arrow);

        QCOMPARE(place(kTopBar, QRect(item, 14, 1, 1)).bubble.arrowCentre, arrow);
    }

    void besideAnUprightBarThereIsNoArrow()
    {
        const auto found = place(kLeftBar, QRect(20, 400, 1, 1));

        QCOMPARE(found.corner, QPoint(48 + 8, 400 - kSize.height() / 2));
        QCOMPARE(found.bubble.arrow, Bubble::Arrow::none);
    }

    void withoutAPlaceItIsInTheCornerNearestToTheBar_data()
    {
        QTest::addColumn<QRect>("available");
        QTest::addColumn<Qt::LayoutDirection>("direction");
        QTest::addColumn<QPoint>("corner");

        const QRect top = kTopBar.available;
        const QRect bottom = kBottomBar.available;
        QTest::newRow("bar above") << top << Qt::LeftToRight << QPoint(1280 - 8 - 340, 28 + 8);
        QTest::newRow("bar below") << bottom << Qt::LeftToRight << QPoint(1280 - 8 - 340, 760 - 8 - 540);
        QTest::newRow("no bar") << kTopBar.whole << Qt::LeftToRight << QPoint(1280 - 8 - 340, 8);
        QTest::newRow("right to left") << top << Qt::RightToLeft << QPoint(8, 28 + 8);
    }

    void withoutAPlaceItIsInTheCornerNearestToTheBar()
    {
        QFETCH(const QRect, available);
        QFETCH(const Qt::LayoutDirection, direction);
        QFETCH(const QPoint, corner);

        const auto found = place({kTopBar.whole, available}, std::nullopt, kSize, direction);

        QCOMPARE(found.corner, corner);
        QCOMPARE(found.bubble.arrow, Bubble::Arrow::none);
    }

    void aPlaceOnNoScreenCountsAsNone()
    {
        QCOMPARE(place(kTopBar, QRect(5000, 14, 1, 1)), place(kTopBar, std::nullopt));
    }

    void itOpensOnTheScreenOfTheItem()
    {
        const auto found = place(kTopBar, QRect(2200, 10, 1, 1));

        QCOMPARE(found.corner, QPoint(1280 + 1024 - 8 - 340, 28 + 2 + kArrowHeight));
    }

    void whatIsTallerThanTheScreenStartsInsideOfIt()
    {
        const auto found = place(kBottomBar, QRect(600, 780, 1, 1), {340, 1000});

        QCOMPARE(found.corner.y(), 8);
    }

    void whatIsWiderThanTheScreenStartsInsideOfIt()
    {
        QCOMPARE(place(kTopBar, QRect(600, 14, 1, 1), {2000, 44}).corner.x(), 8);
        QCOMPARE(place(kTopBar, std::nullopt, {2000, 44}).corner.x(), 8);
    }

    void somethingInAWindowIsPointedAtFromBelowOrWhereThereIsNoRoomFromAbove_data()
    {
        QTest::addColumn<QRect>("anchor");
        QTest::addColumn<int>("top");
        QTest::addColumn<Bubble::Arrow>("arrow");
        QTest::newRow("below") << QRect(600, 38, 24, 44) << 38 + 44 + kArrowHeight << Bubble::Arrow::up;
        QTest::newRow("above") << QRect(600, 706, 24, 44) << 706 - kArrowHeight - 120 << Bubble::Arrow::down;
    }

    void somethingInAWindowIsPointedAtFromBelowOrWhereThereIsNoRoomFromAbove()
    {
        QFETCH(const QRect, anchor);
        QFETCH(const int, top);
        QFETCH(const Bubble::Arrow, arrow);

        const auto found = placePopover({300, 120}, PopoverAnchor {anchor}, {kBottomBar}, kBottomBar, Qt::LeftToRight);

        QCOMPARE(found.corner.y(), top);
        QCOMPARE(found.bubble.arrow, arrow);
        QCOMPARE(found.corner.x() + found.bubble.arrowCentre, 612);
    }
};

QTEST_GUILESS_MAIN(PopoverPlacementTest)

#include "PopoverPlacementTest.moc"
