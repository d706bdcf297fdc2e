#include "platform/linux/item/ClickPosition.h"

#include <QTest>

using namespace orvella;

namespace {

const QRect kScreen(0, 0, 1280, 720);
const ScreenArea kPanelOnTop {kScreen, kScreen.adjusted(0, 28, 0, 0)};
const QPoint kPointer(600, 300);
const QPoint kPointerInPanel(900, 12);

} // namespace

class ClickPositionTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aPointerInThePanelCountsBeforeWhatIsReported()
    {
        QCOMPARE(clickPosition({1000, 10}, {kPanelOnTop}, kPointerInPanel), kPointerInPanel);
        QCOMPARE(clickPosition({20, 14}, {kPanelOnTop}, kPointerInPanel), kPointerInPanel);
        QCOMPARE(clickPosition({-1, -1}, {kPanelOnTop}, kPointerInPanel), kPointerInPanel);
    }

    void elseAReportedPositionInThePanelCounts()
    {
        QCOMPARE(clickPosition({1210, 27}, {kPanelOnTop}, kPointer), QPoint(1210, 27));
        QCOMPARE(clickPosition({1210, 27}, {kPanelOnTop}, std::nullopt), QPoint(1210, 27));
    }

    void anItemActivatedByTheKeyboardHasNoPlace()
    {
        QCOMPARE(clickPosition({-1, -1}, {kPanelOnTop}, kPointer), std::nullopt);
        QCOMPARE(clickPosition({1210, 28}, {kPanelOnTop}, kPointer), std::nullopt);
        QCOMPARE(clickPosition({2420, 10}, {kPanelOnTop}, kPointer), std::nullopt);
    }

    void aPointerAtTheEdgeCountsWhereAPanelMayHide()
    {
        QCOMPARE(clickPosition({20, 14}, {{kScreen, kScreen}}, QPoint(600, 47)), QPoint(600, 47));
        QCOMPARE(clickPosition({20, 14}, {{kScreen, kScreen}}, QPoint(600, 48)), std::nullopt);
        QCOMPARE(clickPosition({20, 14}, {{kScreen, kScreen}}, QPoint(600, 719)), QPoint(600, 719));
    }

    void withoutAPointerEitherThePositionIsUnknown()
    {
        QCOMPARE(clickPosition({20, 14}, {{kScreen, kScreen}}, std::nullopt), std::nullopt);
        QCOMPARE(clickPosition({20, 14}, {}, std::nullopt), std::nullopt);
    }

    void thePanelMayBeOnTheSecondScreen()
    {
        const QRect second(1280, 0, 800, 600);

        const QList<ScreenArea> screens {{kScreen, kScreen}, {second, second.adjusted(0, 0, 0, -40)}};

        QCOMPARE(clickPosition({2000, 580}, screens, kPointer), QPoint(2000, 580));
        QCOMPARE(clickPosition({2000, 559}, screens, kPointer), std::nullopt);
        QCOMPARE(clickPosition({20, 14}, screens, QPoint(1900, 570)), QPoint(1900, 570));
    }
};

QTEST_GUILESS_MAIN(ClickPositionTest)

#include "ClickPositionTest.moc"
