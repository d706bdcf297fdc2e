#include "platform/linux/item/StatusItemFixture.h"
#include "platform/linux/item/TrayGlyph.h"

#include <QRegularExpression>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

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

} // namespace

/// What a bar reads of the item, and what it may ask of it.
class StatusNotifierItemTest final : public QObject, private StatusItemFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

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

    void theIconForAttentionIsThereOnlyWhileItIsNeeded()
    {
        showInArea();
        QCOMPARE(pixmaps(u"AttentionIconPixmap"_s).size(), 0);

        m_item->setAppearance(kAdReady);
        QCOMPARE(pixmaps(u"AttentionIconPixmap"_s).size(), 7);

        m_item->setAppearance(kBalance);
        QCOMPARE(pixmaps(u"AttentionIconPixmap"_s).size(), 0);
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
        QCOMPARE(signalsSent(),
            (QStringList {u"NewIcon"_s, u"NewAttentionIcon"_s, u"NewStatus"_s, u"NewTitle"_s, u"NewToolTip"_s}));

        m_item->setAppearance(kAdReady);
        QCOMPARE(signalsSent(), QStringList());
    }

    void aPanelThatTurnsLightGetsDarkIcons()
    {
        showInArea();

        setWindowColour(Qt::white);
        QCoreApplication::processEvents();

        QCOMPARE(signalsSent(), QStringList {u"NewIcon"_s});
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
};

QTEST_MAIN(StatusNotifierItemTest)

#include "StatusNotifierItemTest.moc"
