#include "platform/linux/StatusNotifierItem.h"
#include "platform/linux/TrayGlyph.h"
#include "support/FakeStatusArea.h"

#include <QGuiApplication>
#include <QPalette>
#include <QRegularExpression>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const StatusAppearance kBalance {u"$"_s, 18, StatusAppearance::Tone::label, u"Orvella · $1.25 available"_s};
const StatusAppearance kAdReady {u"$ AD"_s, 42, StatusAppearance::Tone::green, u"Orvella · ad ready"_s};

/// The pixels of a picture that came over the bus.
QImage imageOf(const StatusPixmap& pixmap)
{
    QImage image(pixmap.width, pixmap.height, QImage::Format_ARGB32);
    for (int y = 0; y < pixmap.height; ++y)
        for (int x = 0; x < pixmap.width; ++x) {
            const auto at = 4 * (qsizetype {y} * pixmap.width + x);
            const auto byte = [&](qsizetype offset) { return static_cast<uchar>(pixmap.argb[at + offset]); };
            image.setPixel(x, y, qRgba(byte(1), byte(2), byte(3), byte(0)));
        }
    return image;
}

QImage drawn(TrayGlyph glyph, int pixels, const QColor& colour)
{
    return drawTrayGlyph(glyph, pixels, colour).convertToFormat(QImage::Format_ARGB32);
}

void setWindowColour(const QColor& colour)
{
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::Window, colour);
    QGuiApplication::setPalette(palette);
}

} // namespace

class StatusNotifierItemTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        setWindowColour(Qt::black);
        m_bus = QDBusConnection::connectToBus(QDBusConnection::SessionBus, u"item"_s);
        QVERIFY(m_bus.isConnected());
        m_tokens = {};
        makeItem({});
        m_area = std::make_unique<FakeStatusArea>();
        m_clicks = 0;
        m_menuPlaces.clear();
    }

    void cleanup()
    {
        m_area.reset();
        m_item.reset();
        m_bus = QDBusConnection(QString());
        QDBusConnection::disconnectFromBus(u"item"_s);
    }

    void itRegistersByItsConnectionWhereAStatusAreaIsThere()
    {
        QVERIFY(m_area->start());

        show();

        QTRY_COMPARE(m_area->items(), QStringList {m_bus.baseService()});
    }

    void itRegistersWhenAStatusAreaComesLater()
    {
        show();
        QTest::qWait(50);

        QVERIFY(m_area->start());

        QTRY_COMPARE(m_area->items(), QStringList {m_bus.baseService()});
    }

    void itRegistersAgainWithARestartedStatusArea()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);

        m_area->stop();
        QTest::qWait(50);
        QVERIFY(m_area->start());

        QTRY_COMPARE(m_area->items(), QStringList {m_bus.baseService()});
    }

    void itRegistersWithAStatusAreaThatReplacesAnotherWithoutAPause()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);

        FakeStatusArea successor;
        m_area->stop();
        QVERIFY(successor.start());

        QTRY_COMPARE(successor.items(), QStringList {m_bus.baseService()});
    }

    void itNeverRegistersTwiceWithTheSameStatusArea()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);

        m_item->setAppearance(kAdReady);
        m_item->setAppearance(kBalance);
        QTest::qWait(100);

        QCOMPARE(m_area->items().size(), 1);
    }

    void aStatusAreaThatComesWhileTheItemLooksForItSeesItOnce()
    {
        show();
        QVERIFY(m_area->start());
        QTRY_COMPARE(m_area->items().size(), 1);

        QTest::qWait(100);

        QCOMPARE(m_area->items().size(), 1);
    }

    void itRegistersAgainWithAStatusAreaThatWasNotReady()
    {
        m_area->refuse(true);
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);
        QTest::qWait(50);

        m_area->refuse(false);
        m_area->announceHost();

        QTRY_COMPARE(m_area->items().size(), 2);
    }

    void itSaysWhetherThereIsAWatcherBeforeItRegisters()
    {
        QList<bool> known;
        qsizetype registeredBefore = -1;
        connect(m_item.get(), &StatusNotifierItem::watcherKnown, this, [&](bool isThere) {
            known.append(isThere);
            registeredBefore = m_area->items().size();
        });

        show();
        QTRY_COMPARE(known, QList<bool> {false});
        QVERIFY(m_area->start());
        QTRY_COMPARE(m_area->items().size(), 1);
        QCOMPARE(registeredBefore, 0);
        m_area->stop();

        QTRY_COMPARE(known, (QList<bool> {false, true, false}));
    }

    void aSecondPanelIsNoReasonToRegisterAgain()
    {
        showInArea();

        m_area->announceHost();
        QTest::qWait(100);

        QCOMPARE(m_area->items().size(), 1);
    }

    void itIsNotOnTheBusBeforeItIsShown()
    {
        QVERIFY(m_area->start());
        QTest::qWait(50);

        QCOMPARE(m_area->items(), QStringList());
        QVERIFY(!read(u"Id"_s).isValid());
    }

    void aBarReadsWhatTheItemIs()
    {
        showInArea();

        QCOMPARE(read(u"Category"_s), u"ApplicationStatus"_s);
        QCOMPARE(read(u"Id"_s), u"org.example.orvella"_s);
        QCOMPARE(read(u"Title"_s), kBalance.description);
        QCOMPARE(read(u"Status"_s), u"Active"_s);
        QCOMPARE(read(u"WindowId"_s), 0);
        QCOMPARE(read(u"ItemIsMenu"_s), false);
        QCOMPARE(read(u"IconName"_s), QString());
        QCOMPARE(read(u"AttentionIconName"_s), QString());
    }

    void anItemWithoutADescriptionHasTheProgramsNameForATitle()
    {
        QGuiApplication::setApplicationDisplayName(u"Orvella"_s);
        m_item->setAppearance({});
        showInArea();

        QCOMPARE(read(u"Title"_s), u"Orvella"_s);
    }

    void anInstalledSymbolicIconIsNamedForTheBarToDraw()
    {
        makeItem(u"org.example.orvella-symbolic"_s);
        showInArea();

        QCOMPARE(read(u"IconName"_s), u"org.example.orvella-symbolic"_s);
        QCOMPARE(imageOf(pixmaps(u"IconPixmap"_s)[1]), drawn(TrayGlyph::dollar, 22, QColor(0xF1, 0xF3, 0xF5)));
    }

    void aGreenIconHasNoNameSoThatItStaysGreen()
    {
        makeItem(u"org.example.orvella-symbolic"_s);
        showInArea();

        m_item->setAppearance(kAdReady);

        QCOMPARE(read(u"IconName"_s), QString());
        QCOMPARE(read(u"AttentionIconName"_s), QString());
        QCOMPARE(signalsSent().count(u"NewIcon"_s), 1);

        m_item->setAppearance(kBalance);

        QCOMPARE(read(u"IconName"_s), u"org.example.orvella-symbolic"_s);
    }

    void aBarFindsNeitherAMenuNorALabelThatWouldHideTheIcon()
    {
        showInArea();

        QVERIFY(!read(u"Menu"_s).isValid());
        QVERIFY(!read(u"XAyatanaLabel"_s).isValid());
    }

    void theTooltipIsTheDescription()
    {
        showInArea();

        const auto argument = read(u"ToolTip"_s).value<QDBusArgument>();

        QCOMPARE(argument.currentSignature(), u"(sa(iiay)ss)"_s);
        const auto toolTip = qdbus_cast<StatusToolTip>(argument);
        QCOMPARE(toolTip.title, kBalance.description);
        QCOMPARE(toolTip.text, QString());
    }

    void theIconComesInTheSizesOfAllUsualBars()
    {
        showInArea();

        QList<int> sizes;
        for (const auto& pixmap : pixmaps(u"IconPixmap"_s)) {
            QCOMPARE(pixmap.height, pixmap.width);
            QCOMPARE(pixmap.argb.size(), 4 * pixmap.width * pixmap.height);
            sizes.append(pixmap.width);
        }

        QCOMPARE(sizes, (QList<int> {16, 22, 24, 32, 44, 48, 64}));
    }

    void theIconIsADollarInTheColourOfThePanelsText()
    {
        showInArea();

        const auto icon = pixmaps(u"IconPixmap"_s);

        QCOMPARE(imageOf(icon[1]), drawn(TrayGlyph::dollar, 22, QColor(0xF1, 0xF3, 0xF5)));
        QCOMPARE(imageOf(icon[6]), drawn(TrayGlyph::dollar, 64, QColor(0xF1, 0xF3, 0xF5)));
    }

    void aGreenToneAsksForAttentionAndTurnsBothIconsGreen()
    {
        showInArea();

        m_item->setAppearance(kAdReady);

        const auto green = drawn(TrayGlyph::dollarAd, 22, QColor(0x4C, 0xD4, 0x84));
        QCOMPARE(read(u"Status"_s), u"NeedsAttention"_s);
        QCOMPARE(read(u"Title"_s), kAdReady.description);
        QCOMPARE(imageOf(pixmaps(u"IconPixmap"_s)[1]), green);
        QCOMPARE(imageOf(pixmaps(u"AttentionIconPixmap"_s)[1]), green);
    }

    void theLabelToneIsActiveAgain()
    {
        showInArea();
        m_item->setAppearance(kAdReady);

        m_item->setAppearance(kBalance);

        QCOMPARE(read(u"Status"_s), u"Active"_s);
        QCOMPARE(imageOf(pixmaps(u"IconPixmap"_s)[1]), drawn(TrayGlyph::dollar, 22, QColor(0xF1, 0xF3, 0xF5)));
    }

    void theBarHearsOfWhatChangedAndOfNothingElse()
    {
        showInArea();

        m_item->setAppearance(kBalance);
        QCOMPARE(signalsSent(), QStringList());

        auto other = kBalance;
        other.description = u"Orvella · $1.26 available"_s;
        m_item->setAppearance(other);
        QCOMPARE(signalsSent(), (QStringList {u"NewTitle"_s, u"NewToolTip"_s}));

        m_item->setAppearance(kAdReady);
        QCOMPARE(signalsSent(), (QStringList {u"NewIcon"_s, u"NewStatus"_s, u"NewTitle"_s, u"NewToolTip"_s}));

        m_item->setAppearance(kAdReady);
        QCOMPARE(signalsSent(), QStringList());
    }

    void aPanelThatTurnsLightGetsDarkIcons()
    {
        showInArea();

        setWindowColour(Qt::white);
        QCoreApplication::processEvents();

        QCOMPARE(signalsSent(), (QStringList {u"NewIcon"_s, u"NewAttentionIcon"_s}));
        QCOMPARE(imageOf(pixmaps(u"IconPixmap"_s)[1]), drawn(TrayGlyph::dollar, 22, QColor(0x1B, 0x1E, 0x23)));
    }

    void activatingTheItemIsAClick()
    {
        showInArea();

        const auto answer = m_area->call(m_bus.baseService(), u"Activate"_s, {1210, 14});

        QCOMPARE(answer.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(m_clicks, 1);
    }

    void aPositionThatNothingConfirmsIsNoPlace()
    {
        showInArea();

        m_area->call(m_bus.baseService(), u"Activate"_s, {20, 14});

        QCOMPARE(m_clicks, 1);
        QCOMPARE(m_item->place(), std::nullopt);
    }

    void aContextMenuIsARequestForTheMenu()
    {
        showInArea();

        const auto answer = m_area->call(m_bus.baseService(), u"ContextMenu"_s, {20, 14});

        QCOMPARE(answer.type(), QDBusMessage::ReplyMessage);
        // Nothing confirms the place, and the menu has to open somewhere.
        QCOMPARE(m_menuPlaces, QList<QPoint> {QPoint(20, 14)});
        QCOMPARE(m_clicks, 0);
    }

    void theMiddleButtonAndTheWheelAreAnsweredAndDoNothing()
    {
        showInArea();

        const auto item = m_bus.baseService();
        QCOMPARE(m_area->call(item, u"SecondaryActivate"_s, {1, 2}).type(), QDBusMessage::ReplyMessage);
        QCOMPARE(m_area->call(item, u"Scroll"_s, {120, u"vertical"_s}).type(), QDBusMessage::ReplyMessage);

        QCOMPARE(m_clicks, 0);
        QCOMPARE(m_menuPlaces, QList<QPoint>());
        QCOMPARE(signalsSent(), QStringList());
    }

    void anActivationTokenIsKeptForTheNextWindow()
    {
        showInArea();

        const auto answer =
            m_area->call(m_bus.baseService(), u"ProvideXdgActivationToken"_s, {u"token of the click"_s});

        QCOMPARE(answer.type(), QDBusMessage::ReplyMessage);
        QCOMPARE(m_tokens.take(), u"token of the click"_s);
    }

    void withoutASessionBusItDoesNothingQuietly()
    {
        QTest::failOnWarning(QRegularExpression(u".*"_s));
        const auto nowhere = QDBusConnection::connectToBus(u"unix:path=/nonexistent/bus"_s, u"nowhere"_s);
        QVERIFY(!nowhere.isConnected());
        StatusNotifierItem item(nowhere, {u"org.example.orvella"_s, {}}, m_tokens);
        QList<bool> known;
        connect(&item, &StatusNotifierItem::watcherKnown, this, [&known](bool isThere) { known.append(isThere); });

        item.show({});
        item.setAppearance(kAdReady);
        QCoreApplication::processEvents();

        QCOMPARE(known, QList<bool> {false});
        QCOMPARE(item.place(), std::nullopt);
    }

    void anItemThatIsGoneIsOffTheBus()
    {
        showInArea();

        m_item.reset();

        QVERIFY(!read(u"Id"_s).isValid());
    }

private:
    void makeItem(const QString& symbolicIcon)
    {
        // The object's path on the bus has to be free.
        m_item.reset();
        m_item = std::make_unique<StatusNotifierItem>(
            m_bus, StatusNotifierItem::Identity {u"org.example.orvella"_s, symbolicIcon}, m_tokens);
        m_item->setAppearance(kBalance);
    }

    void show()
    {
        m_item->show({[this] { ++m_clicks; }, [this](QPoint place) { m_menuPlaces.append(place); }});
    }

    void showInArea()
    {
        QVERIFY(m_area->start());
        show();
        QTRY_COMPARE(m_area->items().size(), 1);
    }

    QVariant read(const QString& name) { return m_area->read(m_bus.baseService(), name); }

    StatusPixmaps pixmaps(const QString& name)
    {
        const auto argument = read(name).value<QDBusArgument>();
        return qdbus_cast<StatusPixmaps>(argument);
    }

    QStringList signalsSent()
    {
        m_area->synchronise(m_bus.baseService());
        return m_area->takeSignals();
    }

    QDBusConnection m_bus {QString()};
    ActivationTokens m_tokens;
    std::unique_ptr<StatusNotifierItem> m_item;
    std::unique_ptr<FakeStatusArea> m_area;
    int m_clicks = 0;
    QList<QPoint> m_menuPlaces;
};

QTEST_MAIN(StatusNotifierItemTest)

#include "StatusNotifierItemTest.moc"
