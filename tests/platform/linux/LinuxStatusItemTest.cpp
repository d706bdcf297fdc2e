#include "platform/linux/LinuxStatusItem.h"
#include "support/FakeStatusArea.h"
#include "support/FakeTray.h"
#include "support/VirtualDesktop.h"

#include <QApplication>
#include <QCursor>
#include <QPalette>
#include <QRegularExpression>
#include <QScreen>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const StatusAppearance kBalance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $1.25 available"_s};
const StatusAppearance kAdReady {u"$ AD"_s, 42, StatusAppearance::Tone::green, u"Orvella · ad ready"_s};

/// Programs may take their time on a busy machine.
constexpr int kPatienceMs = 20'000;

const QColor kLightText(0xF1, 0xF3, 0xF5);
const QColor kLightGreen(0x4C, 0xD4, 0x84);

/// Leaves a strip along the top edge to panels, as a window manager does.
bool reserveTop(int height)
{
    const auto area = u"0,%1,1280,%2"_s.arg(height).arg(720 - height);
    return VirtualDesktop::run(
        u"xprop"_s, {u"-root"_s, u"-f"_s, u"_NET_WORKAREA"_s, u"32c"_s, u"-set"_s, u"_NET_WORKAREA"_s, area});
}

} // namespace

/// The status item between a watcher on the session bus and a tray of the X server, which come and go.
class LinuxStatusItemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        QPalette palette = QApplication::palette();
        palette.setColor(QPalette::Window, Qt::black);
        QApplication::setPalette(palette);

        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"item"_s);
        QVERIFY(m_bus.isConnected());
        makeItem(m_bus);
        m_area = std::make_unique<FakeStatusArea>();
        m_tray = std::make_unique<FakeTray>();
        m_iconsAtRegistration.clear();
        m_area->whenRegistered([this] { m_iconsAtRegistration.append(m_tray->icons()); });
    }

    void cleanup()
    {
        m_area.reset();
        m_item.reset();
        m_tray.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(u"item"_s);
    }

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
    static bool movePointer(QPoint place)
    {
        QCursor::setPos(place);
        return QTest::qWaitFor([place] { return QCursor::pos() == place; }, kPatienceMs);
    }

    void makeItem(const QDBusConnection& bus)
    {
        m_clicks = 0;
        m_menuPlaces.clear();
        m_item = std::make_unique<LinuxStatusItem>(
            bus, StatusNotifierItem::Identity {u"org.example.orvella"_s, {}}, m_tokens);
        m_item->setAppearance(kBalance);
    }

    void show()
    {
        m_item->show({[this] { ++m_clicks; }, [this](QPoint place) { m_menuPlaces.append(place); }});
    }

    void showInTray()
    {
        m_tray->start();
        show();
        // Once it is painted Qt has heard of the tray's start, at which it makes the icon anew.
        QTRY_VERIFY_WITH_TIMEOUT(shows(kLightText), kPatienceMs);
    }

    void showInArea()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE_WITH_TIMEOUT(m_area->items().size(), 1, kPatienceMs);
    }

    bool shows(const QColor& colour)
    {
        const auto place = m_tray->place();
        return place && VirtualDesktop::find(VirtualDesktop::screenshot(*place), colour);
    }

    QDBusConnection m_bus {QString()};
    ActivationTokens m_tokens;
    std::unique_ptr<LinuxStatusItem> m_item;
    std::unique_ptr<FakeStatusArea> m_area;
    std::unique_ptr<FakeTray> m_tray;
    /// What the tray showed each time the item registered with the watcher.
    QList<int> m_iconsAtRegistration;
    int m_clicks = 0;
    QList<QPoint> m_menuPlaces;
};

QTEST_MAIN(LinuxStatusItemTest)

#include "LinuxStatusItemTest.moc"
