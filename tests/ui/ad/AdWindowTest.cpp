#include "api/Endpoints.h"
#include "ui/ad/AdWindowView.h"
#include "ui/ad/AdWindowWorld.h"
#include "ui/ad/CountdownGauge.h"

#include <QFontMetricsF>
#include <QLabel>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

int rightEdge(const QWidget* widget)
{
    return widget->mapTo(widget->window(), QPoint(widget->width(), 0)).x();
}

AvailableAd adWith(const QString& body)
{
    auto ad = anAd();
    ad.body = body;
    return ad;
}

} // namespace

/// The panel with an ad: its size, its row, and what opens and closes it.
class AdWindowTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePanelIs44PointsHighAndAsWideAsItsTexts()
    {
        AdWindowWorld world;
        const QFontMetricsF text(world.look.font(TypeStyle::bodyStrong));
        const QFontMetricsF money(world.look.font(TypeStyle::earnings));
        const auto width = std::ceil(text.horizontalAdvance(anAd().body) + money.horizontalAdvance(u"12 cent"_s)
            + money.horizontalAdvance(u"Paid"_s) + 76);

        QCOMPARE(AdWindowView::contentWidth(world.look, world.controller->viewing()), static_cast<int>(width));
        QCOMPARE(world.find<QWidget>(u"openAd"_s)->parentWidget()->size(), QSize(static_cast<int>(width), 44));
    }

    void theWidthIsBounded_data()
    {
        QTest::addColumn<QString>("body");
        QTest::addColumn<int>("width");
        QTest::newRow("very short") << u"Hi"_s << 260;
        QTest::newRow("empty") << QString() << 260;
        QTest::newRow("very long") << u"A long line of words. "_s.repeated(40) << 640;
        QTest::newRow("many lines") << u"A line\n"_s.repeated(200) << 640;
    }

    void theWidthIsBounded()
    {
        QFETCH(const QString, body);
        QFETCH(const int, width);
        AdWindowWorld world(adWith(body));

        QCOMPARE(world.find<QWidget>(u"openAd"_s)->parentWidget()->size(), QSize(width, 44));
    }

    void theWidthIsThatOfTheTextsBetweenItsBounds()
    {
        AdWindowWorld world;
        AdWindowWorld longer(adWith(anAd().body + u" and more"_s));

        QVERIFY(AdWindowView::contentWidth(longer.look, longer.controller->viewing())
            > AdWindowView::contentWidth(world.look, world.controller->viewing()));
    }

    void theRowTellsWhatItIs()
    {
        AdWindowWorld world;

        const auto* const ad = world.find(u"openAd"_s);
        QCOMPARE(ad->accessibleName(), u"Open ad: "_s + anAd().body);
        QCOMPARE(ad->cursor().shape(), Qt::PointingHandCursor);
        QCOMPARE(world.find<CountdownGauge>(u"gauge"_s)->remaining(), 15);
        QCOMPARE(world.find<QLabel>(u"earnings"_s)->text(), u"12 cent"_s);
        QCOMPARE(world.find<QLabel>(u"earnings"_s)->toolTip(), u"Exact earnings: 12.5¢ ($0.125)"_s);
        QCOMPARE(world.find(u"adInformation"_s)->toolTip(), u"Why you are seeing this ad"_s);
        QCOMPARE(world.find(u"adInformation"_s)->accessibleName(), u"Ad information"_s);
        QCOMPARE(world.find(u"close"_s)->toolTip(), u"Dismiss without earning"_s);
        QCOMPARE(world.find(u"close"_s)->accessibleName(), u"Dismiss ad without earning"_s);
        QVERIFY(!world.find<QLabel>(u"paid"_s));
    }

    void completionChangesTheLabelsAndMovesNothingToTheRight()
    {
        AdWindowWorld world;
        const auto earnings = rightEdge(world.find<QLabel>(u"earnings"_s));
        const auto gauge = rightEdge(world.find<QWidget>(u"gauge"_s));
        const auto width = world.panel()->width();

        world.watchToTheEnd();

        QCOMPARE(world.find<QLabel>(u"paid"_s)->text(), u"Paid"_s);
        QVERIFY(!world.find<QWidget>(u"gauge"_s));
        QCOMPARE(world.find(u"close"_s)->toolTip(), u"Close"_s);
        QCOMPARE(world.find(u"close"_s)->accessibleName(), u"Close ad"_s);
        QCOMPARE(rightEdge(world.find<QLabel>(u"earnings"_s)), earnings);
        QCOMPARE(rightEdge(world.find<QLabel>(u"paid"_s)), gauge);
        QCOMPARE(world.panel()->width(), width);
        QCOMPARE(world.finished, std::vector {std::optional(12.5)});
    }

    void aTextThatFitsIsNotShortenedAtCompletionEither()
    {
        FakeLook desktop;
        const Look look(desktop);
        const QFontMetricsF metrics(look.font(TypeStyle::bodyStrong));
        QString body;
        while (metrics.horizontalAdvance(body + u'n') <= 488)
            body += u'n';
        AdWindowWorld world(adWith(body));

        world.watchToTheEnd();

        // The ring beside the text has four points on either side; what rounding takes is made up for.
        const auto room = world.find(u"openAd"_s)->width() - 8 + 2;
        QVERIFY(room >= metrics.horizontalAdvance(body));
        QVERIFY(room < metrics.horizontalAdvance(body) + 24);
    }

    void theClickThroughOpensThePageAndLeavesThePanel()
    {
        AdWindowWorld world;

        world.click(u"openAd"_s);
        world.platform.clock.advance(1s);

        QCOMPARE(world.platform.browser.opened.size(), 1U);
        QVERIFY(world.panel());
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 1);
    }

    void aPanelThatTheSystemHidIsBackAQuarterOfASecondAfterTheClickThrough()
    {
        AdWindowWorld world;
        world.click(u"openAd"_s);
        qobject_cast<Popover*>(world.panel())->performClose();

        world.platform.clock.advance(249ms);
        QVERIFY(!world.panel());
        world.platform.clock.advance(1ms);

        QVERIFY(world.panel());
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 1);
    }

    void aPanelThatTheProgramClosedStaysClosed_data()
    {
        QTest::addColumn<bool>("byTheViewer");
        QTest::newRow("dismissed") << true;
        QTest::newRow("watched to the end") << false;
    }

    void aPanelThatTheProgramClosedStaysClosed()
    {
        QFETCH(const bool, byTheViewer);
        AdWindowWorld world;
        if (byTheViewer) {
            world.click(u"openAd"_s);
            world.click(u"close"_s);
        } else {
            world.watchToTheEnd();
            world.platform.clock.advance(3s - 100ms);
            world.click(u"openAd"_s);
            world.platform.clock.advance(100ms);
        }
        QVERIFY(!world.panel());

        world.platform.clock.advance(1s);

        QVERIFY(!world.panel());
    }

    void theCloseButtonDismisses()
    {
        AdWindowWorld world;

        world.click(u"close"_s);

        QVERIFY(!world.panel());
        QCOMPARE(world.dismissals, 1);
        world.platform.clock.advance(1min);
        QVERIFY(world.finished.empty());
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
    }

    void aPanelThatWasClosedWaitsForNothing()
    {
        AdWindowWorld world;
        // The panel has found its place.
        world.platform.clock.advance(500ms);
        QCOMPARE(world.platform.clock.sleepers(), 1U);

        world.click(u"close"_s);

        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void aClickElsewhereDoesNotCloseThePanel()
    {
        AdWindowWorld world;

        world.platform.windows.press({5, 790});

        QVERIFY(world.panel());
        QCOMPARE(world.dismissals, 0);
    }

    void escapeNeverClosesTheAd()
    {
        AdWindowWorld world;

        QTest::keyClick(world.panel(), Qt::Key_Escape);

        QVERIFY(world.panel());
        QCOMPARE(world.dismissals, 0);
    }

    void theWholeLifeOfAnAdWorksByTheKeyboard()
    {
        AdWindowWorld world;
        QApplication::setActiveWindow(world.panel());
        QStringList order;
        for (int step = 0; step < 3; ++step) {
            QTest::keyClick(QApplication::focusWidget(), Qt::Key_Tab);
            order.append(QApplication::focusWidget()->objectName());
        }
        QCOMPARE(order, (QStringList {u"openAd"_s, u"adInformation"_s, u"close"_s}));

        QTest::keyClick(world.find(u"openAd"_s), Qt::Key_Return);
        settle();
        QCOMPARE(world.platform.browser.opened.size(), 1U);

        QTest::keyClick(world.find(u"adInformation"_s), Qt::Key_Space);
        settle();
        QVERIFY(world.disclosure());
        QTest::keyClick(world.panel(), Qt::Key_Escape);
        settle();
        QVERIFY(!world.disclosure());

        QTest::keyClick(world.find(u"close"_s), Qt::Key_Space);
        QCOMPARE(world.dismissals, 1);
    }

    void aFailedViewShowsZeroAndGreyEarnings()
    {
        AdWindowWorld world;
        world.transport.fail(endpoints::kSessionComplete, u"No network."_s);

        world.watchToTheEnd();

        QCOMPARE(world.find<CountdownGauge>(u"gauge"_s)->remaining(), 0);
        QCOMPARE(world.finished, std::vector {std::optional<double>()});
        world.platform.clock.advance(3s);
        QVERIFY(!world.panel());
    }

    void endingItInTheMiddleLeavesNothingBehind()
    {
        AdWindowWorld world;
        world.click(u"adInformation"_s);
        world.click(u"openAd"_s);

        world.controller.reset();
        settle();

        QVERIFY(!world.panel());
        QVERIFY(!world.disclosure());
        QCOMPARE(world.platform.clock.sleepers(), 0U);
        QCOMPARE(world.platform.windows.watches(), 0U);
    }
};

QTEST_MAIN(AdWindowTest)

#include "AdWindowTest.moc"
