#include "platform/linux/item/LinuxStatusItemFixture.h"

using namespace orvella;
using namespace Qt::StringLiterals;

/// Where the status item is, as far as tray, clicks and panels say so.
class LinuxStatusItemPlaceTest final : public QObject, private LinuxStatusItemFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

    void inTheTrayThePlaceIsTheIcons()
    {
        showInTray();

        QTRY_COMPARE_WITH_TIMEOUT(m_item->place(), m_tray->place(), kPatienceMs);
    }

    void aConfirmedClickIsThePlace()
    {
        QVERIFY(reserveTop(28));
        QTRY_COMPARE_WITH_TIMEOUT(QGuiApplication::primaryScreen()->availableGeometry().top(), 28, kPatienceMs);
        showInArea();
        QVERIFY(movePointer({640, 300}));
        QCOMPARE(m_item->place(), std::nullopt);

        m_area->call(m_bus.baseService(), u"Activate"_s, {1210, 14});

        QCOMPARE(m_item->place(), QRect(1210, 14, 1, 1));
    }

    void elsewhereTheMenuIsAtThePointerAndThePlaceIsNotKnown()
    {
        showInArea();
        QVERIFY(movePointer({640, 300}));

        m_area->call(m_bus.baseService(), u"ContextMenu"_s, {20, 300});

        QCOMPARE(m_menuPlaces, QList<QPoint> {QPoint(640, 300)});
        QCOMPARE(m_item->place(), std::nullopt);
    }

    void aPointerAtTheEdgeIsThePlace()
    {
        showInArea();
        QVERIFY(movePointer({640, 5}));

        m_area->call(m_bus.baseService(), u"Activate"_s, {20, 300});

        QCOMPARE(m_item->place(), QRect(640, 5, 1, 1));
    }

    void thePlaceIsForgottenWhenTheWatcherRestarts()
    {
        showInArea();
        QVERIFY(movePointer({640, 5}));
        m_area->call(m_bus.baseService(), u"Activate"_s, {20, 300});
        QVERIFY(m_item->place());

        m_area->stop();
        QVERIFY(m_area->start());

        QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);
        QCOMPARE(m_item->place(), std::nullopt);
    }

    void thePlaceIsForgottenWhenThePanelsTakeAnotherPartOfTheScreen()
    {
        QVERIFY(reserveTop(28));
        QTRY_COMPARE_WITH_TIMEOUT(QGuiApplication::primaryScreen()->availableGeometry().top(), 28, kPatienceMs);
        showInArea();
        m_area->call(m_bus.baseService(), u"Activate"_s, {1210, 14});
        QVERIFY(m_item->place());

        QVERIFY(reserveTop(40));

        QTRY_COMPARE_WITH_TIMEOUT(m_item->place(), std::nullopt, kPatienceMs);
    }

    void itsPlaceIsNotAmongTheSettings() { QVERIFY(!m_item->keepsPlaceInSettings()); }

private:
    void showInArea()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);
    }
};

QTEST_MAIN(LinuxStatusItemPlaceTest)

#include "LinuxStatusItemPlaceTest.moc"
