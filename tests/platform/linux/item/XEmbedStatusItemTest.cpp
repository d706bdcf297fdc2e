#include "platform/linux/item/XEmbedStatusItem.h"
#include "support/FakeTray.h"
#include "support/VirtualDesktop.h"

#include <QApplication>
#include <QPalette>
#include <QTest>
#include <QWidget>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const StatusAppearance kBalance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $1.25 available"_s};
const StatusAppearance kAdReady {u"$ AD"_s, 42, StatusAppearance::Tone::green, u"Orvella · ad ready"_s};

/// Programs may take their time on a busy machine.
constexpr int kPatienceMs = 20'000;

const QColor kLightText(0xF1, 0xF3, 0xF5);
const QColor kDarkText(0x1B, 0x1E, 0x23);
const QColor kLightGreen(0x4C, 0xD4, 0x84);

void setWindowColour(const QColor& colour)
{
    QPalette palette = QApplication::palette();
    palette.setColor(QPalette::Window, colour);
    QApplication::setPalette(palette);
}

bool clickTwice(QPoint place)
{
    return VirtualDesktop::run(u"xdotool"_s,
        {u"mousemove"_s, QString::number(place.x()), QString::number(place.y()), u"click"_s, u"--repeat"_s, u"2"_s,
            u"--delay"_s, u"20"_s, u"1"_s});
}

} // namespace

/// The status item in a tray of the X server, clicked by a real pointer.
class XEmbedStatusItemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        setWindowColour(Qt::black);
        m_clicks = 0;
        m_menuPlaces.clear();
        m_tray = std::make_unique<FakeTray>();
        m_item = std::make_unique<XEmbedStatusItem>();
        m_item->setAppearance(kBalance);
    }

    void cleanup()
    {
        m_item.reset();
        m_tray.reset();
    }

    void aTrayThatIsThereTakesTheIcon()
    {
        m_tray->start();

        show();

        QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 1, kPatienceMs);
    }

    void aTrayThatComesLaterTakesTheIcon()
    {
        show();
        QCoreApplication::processEvents();

        m_tray->start();

        QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 1, kPatienceMs);
    }

    void aTrayThatComesAnewTakesTheIconOnce()
    {
        showInTray();
        m_tray->stop();
        QTRY_COMPARE_WITH_TIMEOUT(m_item->place(), std::nullopt, kPatienceMs);

        m_tray->start();

        QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 1, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(m_item->place(), m_tray->place(), kPatienceMs);
    }

    void anItemThatIsGoneIsOutOfTheTray()
    {
        showInTray();

        m_item.reset();

        QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 0, kPatienceMs);
    }

    void itIsNotInTheTrayBeforeItIsShown()
    {
        m_tray->start();
        QTest::qWait(50);

        QCOMPARE(m_tray->icons(), 0);
        QCOMPARE(m_item->place(), std::nullopt);
    }

    void itsPlaceIsThatOfTheIcon()
    {
        showInTray();

        QTRY_COMPARE_WITH_TIMEOUT(m_item->place(), m_tray->place(), kPatienceMs);
    }

    void anIconThatNoTrayHasTakenIsNowhere()
    {
        show();
        QCOMPARE(m_item->place(), std::nullopt);

        m_tray->ignoreRequests();
        m_tray->start();
        QTest::qWait(200);

        QCOMPARE(m_item->place(), std::nullopt);
    }

    void theIconHasTheColourOfTheTone()
    {
        showInTray();

        m_item->setAppearance(kAdReady);

        QTRY_VERIFY_WITH_TIMEOUT(shows(kLightGreen) && !shows(kLightText), kPatienceMs);
    }

    void aPanelThatTurnsLightGetsADarkIcon()
    {
        showInTray();

        setWindowColour(Qt::white);

        QTRY_VERIFY_WITH_TIMEOUT(shows(kDarkText) && !shows(kLightText), kPatienceMs);
    }

    void theTooltipIsTheDescription()
    {
        showInTray();

        QStringList toolTips;
        for (const auto* widget : QApplication::topLevelWidgets())
            toolTips.append(widget->toolTip());

        QVERIFY(toolTips.contains(kBalance.description));
    }

    void aPressOfTheLeftButtonIsAClick()
    {
        showInTray();

        QVERIFY(VirtualDesktop::click(centre()));

        QTRY_COMPARE_WITH_TIMEOUT(m_clicks, 1, kPatienceMs);
        QCOMPARE(m_menuPlaces, QList<QPoint>());
    }

    void aPressOfTheRightButtonAsksForTheMenuThere()
    {
        showInTray();

        QVERIFY(VirtualDesktop::click(centre(), 3));

        QTRY_COMPARE_WITH_TIMEOUT(m_menuPlaces, QList<QPoint> {centre()}, kPatienceMs);
        QCOMPARE(m_clicks, 0);
    }

    void aDoubleClickIsNoMoreThanAClick()
    {
        showInTray();

        QVERIFY(clickTwice(centre()));
        // Presses come in order, so both of the double click have been heard with this one.
        QVERIFY(VirtualDesktop::click(centre(), 3));

        QTRY_COMPARE_WITH_TIMEOUT(m_menuPlaces.size(), 1, kPatienceMs);
        QCOMPARE(m_clicks, 1);
    }

    void theMiddleButtonAndTheWheelDoNothing()
    {
        showInTray();

        QVERIFY(VirtualDesktop::click(centre(), 2));
        QVERIFY(VirtualDesktop::click(centre(), 4));
        QVERIFY(VirtualDesktop::click(centre(), 5));
        QVERIFY(VirtualDesktop::click(centre(), 3));

        QTRY_COMPARE_WITH_TIMEOUT(m_menuPlaces.size(), 1, kPatienceMs);
        QCOMPARE(m_clicks, 0);
    }

    void theItemMayGoWhileAClickIsBeingAnswered()
    {
        const auto answers = std::make_shared<int>(0);
        m_tray->start();
        m_item->show({[this, answers] {
                          m_item.reset();
                          ++*answers;
                      },
            {}});
        QTRY_VERIFY_WITH_TIMEOUT(shows(kLightText), kPatienceMs);

        QVERIFY(VirtualDesktop::click(centre()));

        QTRY_COMPARE_WITH_TIMEOUT(*answers, 1, kPatienceMs);
        QTRY_COMPARE_WITH_TIMEOUT(m_tray->icons(), 0, kPatienceMs);
    }

private:
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

    QPoint centre() { return m_tray->place().value_or(QRect()).center(); }

    bool shows(const QColor& colour)
    {
        const auto place = m_tray->place();
        return place && VirtualDesktop::find(VirtualDesktop::screenshot(*place), colour);
    }

    std::unique_ptr<FakeTray> m_tray;
    std::unique_ptr<XEmbedStatusItem> m_item;
    int m_clicks = 0;
    QList<QPoint> m_menuPlaces;
};

QTEST_MAIN(XEmbedStatusItemTest)

#include "XEmbedStatusItemTest.moc"
