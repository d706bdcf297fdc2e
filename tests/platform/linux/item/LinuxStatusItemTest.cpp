#include "platform/linux/item/LinuxStatusItemFixture.h"

#include <QRegularExpression>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const StatusAppearance kAdReady {u"$ AD"_s, 42, StatusAppearance::Tone::green, u"Orvella · ad ready"_s};

const QColor kLightGreen(0x4C, 0xD4, 0x84);

} // namespace

/// The status item between a watcher on the session bus and a tray of the X server, which come and go.
class LinuxStatusItemTest final : public QObject, private LinuxStatusItemFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

    void whereThereIsAWatcherTheItemKeepsOutOfTheTray()
    {
        QVERIFY(m_area->start());
        m_tray->start();

        show();

        QTRY_COMPARE_WITH_TIMEOUT(m_area->items(), QStringList {m_bus.baseService()}, kPatienceMs);
        QTest::qWait(100);
        QCOMPARE(m_tray->icons(), 0);
        QCOMPARE(m_area->items().size(), 1);
    }

    void whereThereIsNoWatcherTheItemIsInTheTray()
    {
        m_tray->start();

        show();

        QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 1, kPatienceMs);
    }

    void aTrayThatComesLateTakesTheItem()
    {
        show();
        QTest::qWait(50);

        m_tray->start();

        QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 1, kPatienceMs);
    }

    void aWatcherThatComesLateFindsTheTrayEmpty()
    {
        showInTray();

        QVERIFY(m_area->start());

        QTRY_COMPARE_WITH_TIMEOUT(m_area->items(), QStringList {m_bus.baseService()}, kPatienceMs);
        QCOMPARE(m_iconsAtRegistration, QList<int> {0});
        QCOMPARE(m_tray->icons(), 0);
    }

    void aWatcherThatGoesLeavesTheItemToTheTray()
    {
        QVERIFY(m_area->start());
        m_tray->start();
        show();
        QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);

        m_area->stop();

        QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 1, kPatienceMs);
    }

    void aPanelThatIsATrayFirstAndThenAWatcherEndsWithOneItem()
    {
        show();
        QTest::qWait(50);

        m_tray->start();
        QVERIFY(m_area->start());

        QTRY_COMPARE_WITH_TIMEOUT(m_area->items(), QStringList {m_bus.baseService()}, kPatienceMs);
        QTest::qWait(100);
        QCOMPARE(m_tray->icons(), 0);
        QCOMPARE(m_iconsAtRegistration, QList<int> {0});
    }

    void aPanelThatIsAWatcherFirstAndThenATrayEndsWithOneItem()
    {
        show();
        QTest::qWait(50);

        QVERIFY(m_area->start());
        m_tray->start();

        QTRY_COMPARE_WITH_TIMEOUT(m_area->items(), QStringList {m_bus.baseService()}, kPatienceMs);
        QTest::qWait(100);
        QCOMPARE(m_tray->icons(), 0);
        QCOMPARE(m_iconsAtRegistration, QList<int> {0});
    }

    void aPanelOfBothKindsThatRestartsEndsWithOneItem()
    {
        QVERIFY(m_area->start());
        m_tray->start();
        show();
        QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);

        m_area->stop();
        m_tray->stop();
        m_tray->start();
        QVERIFY(m_area->start());

        QTRY_COMPARE_WITH_TIMEOUT(m_area->items(), QStringList {m_bus.baseService()}, kPatienceMs);
        QTest::qWait(100);
        QCOMPARE(m_tray->icons(), 0);
        QCOMPARE(m_iconsAtRegistration, (QList<int> {0, 0}));
    }

    void theItemMovesAsOftenAsTheWatcherComesAndGoes()
    {
        showInTray();

        for (int turn = 0; turn < 3; ++turn) {
            QVERIFY(m_area->start());
            QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);
            QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 0, kPatienceMs);
            m_area->stop();
            QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 1, kPatienceMs);
        }

        QCOMPARE(m_iconsAtRegistration, (QList<int> {0, 0, 0}));
    }

    void withoutASessionBusTheItemIsInTheTray()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        makeItem(QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s));

        showInTray();

        QVERIFY(shows(kLightText));
    }

    void theTrayShowsWhatTheItemLookedLikeBefore()
    {
        QVERIFY(m_area->start());
        m_tray->start();
        show();
        QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);
        m_item->setAppearance(kAdReady);

        m_area->stop();

        QTRY_VERIFY_WITH_TIMEOUT(shows(kLightGreen), kPatienceMs);
        m_item->setAppearance(kBalance);
        QTRY_VERIFY_WITH_TIMEOUT(shows(kLightText), kPatienceMs);
    }

    void aClickIsHeardByEitherProtocol()
    {
        showInTray();
        QVERIFY(VirtualDesktop::click(m_tray->place().value_or(QRect()).center()));
        QTRY_COMPARE_WITH_TIMEOUT(m_clicks, 1, kPatienceMs);

        QVERIFY(m_area->start());
        QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);
        m_area->call(m_bus.baseService(), u"Activate"_s, {600, 10});

        QCOMPARE(m_clicks, 2);
    }

    void theMenuIsAskedForByEitherProtocol()
    {
        showInTray();
        const auto inTray = m_tray->place().value_or(QRect()).center();
        QVERIFY(VirtualDesktop::click(inTray, 3));
        QTRY_COMPARE_WITH_TIMEOUT(m_menuPlaces, QList<QPoint> {inTray}, kPatienceMs);

        QVERIFY(reserveTop(24));
        QTRY_COMPARE_WITH_TIMEOUT(QGuiApplication::primaryScreen()->availableGeometry().top(), 24, kPatienceMs);
        QVERIFY(m_area->start());
        QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);
        QVERIFY(movePointer({640, 300}));
        m_area->call(m_bus.baseService(), u"ContextMenu"_s, {600, 10});

        QCOMPARE(m_menuPlaces, (QList<QPoint> {inTray, {600, 10}}));
    }
};

QTEST_MAIN(LinuxStatusItemTest)

#include "LinuxStatusItemTest.moc"
