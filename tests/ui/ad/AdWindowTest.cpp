#include "ui/ad/AdWindowController.h"

#include "api/APIClient.h"
#include "api/Endpoints.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "ui/ad/AdWindowView.h"
#include "ui/ad/CountdownGauge.h"

#include <QApplication>
#include <QFontMetricsF>
#include <QLabel>
#include <QPushButton>
#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

QWidget* window(const QString& name)
{
    for (auto* const candidate : QApplication::topLevelWidgets()) {
        if (candidate->objectName() == name && candidate->isVisible())
            return candidate;
    }
    return nullptr;
}

struct World {
    FakePlatform platform;
    FakeTransport transport;
    APIClient api {platform.lend(), transport};
    Look look {platform.look};
    std::unique_ptr<AdWindowController> controller;
    int dismissals = 0;
    std::vector<std::optional<double>> finished;

    explicit World(const AvailableAd& ad = anAd())
    {
        transport.answerEverything();
        controller = std::make_unique<AdWindowController>(look, ad, api, true, platform.lend(),
            AdWindowController::OwnerActions {
                .onDismiss = [this] { ++dismissals; },
                .onFinished = [this](std::optional<double> cents) { finished.push_back(cents); },
                .onFailed = [](const Failure&) {},
            });
        controller->show(Popover::Keyboard::left);
        settle();
    }

    [[nodiscard]] QWidget* panel() const { return window(u"adPanel"_s); }
    [[nodiscard]] QWidget* disclosure() const { return window(u"adDisclosure"_s); }

    template <class T = QPushButton> [[nodiscard]] T* find(const QString& name) const
    {
        return window(u"adPanel"_s)->findChild<T*>(name);
    }

    void click(const QString& name)
    {
        QTest::mouseClick(find(name), Qt::LeftButton);
        settle();
    }

    void watchToTheEnd()
    {
        platform.clock.advance(anAd().requiredSeconds * 1s);
        settle();
    }
};

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

class AdWindowTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void thePanelIs44PointsHighAndAsWideAsItsTexts()
    {
        World world;
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
        World world(adWith(body));

        QCOMPARE(world.find<QWidget>(u"openAd"_s)->parentWidget()->size(), QSize(width, 44));
    }

    void theWidthIsThatOfTheTextsBetweenItsBounds()
    {
        World world;
        World longer(adWith(anAd().body + u" and more"_s));

        QVERIFY(AdWindowView::contentWidth(longer.look, longer.controller->viewing())
            > AdWindowView::contentWidth(world.look, world.controller->viewing()));
    }

    void theRowTellsWhatItIs()
    {
        World world;

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
        World world;
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
        World world(adWith(body));

        world.watchToTheEnd();

        // The ring beside the text has four points on either side; what rounding takes is made up for.
        const auto room = world.find(u"openAd"_s)->width() - 8 + 2;
        QVERIFY(room >= metrics.horizontalAdvance(body));
        QVERIFY(room < metrics.horizontalAdvance(body) + 24);
    }

    void theClickThroughOpensThePageAndLeavesThePanel()
    {
        World world;

        world.click(u"openAd"_s);
        world.platform.clock.advance(1s);

        QCOMPARE(world.platform.browser.opened.size(), 1U);
        QVERIFY(world.panel());
        QCOMPARE(world.transport.count(endpoints::kSessionStart), 1);
    }

    void aPanelThatTheSystemHidIsBackAQuarterOfASecondAfterTheClickThrough()
    {
        World world;
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
        World world;
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
        World world;

        world.click(u"close"_s);

        QVERIFY(!world.panel());
        QCOMPARE(world.dismissals, 1);
        world.platform.clock.advance(1min);
        QVERIFY(world.finished.empty());
        QCOMPARE(world.transport.count(endpoints::kSessionComplete), 0);
    }

    void aPanelThatWasClosedWaitsForNothing()
    {
        World world;
        // The panel has found its place.
        world.platform.clock.advance(500ms);
        QCOMPARE(world.platform.clock.sleepers(), 1U);

        world.click(u"close"_s);

        QCOMPARE(world.platform.clock.sleepers(), 0U);
    }

    void aClickElsewhereDoesNotCloseThePanel()
    {
        World world;

        world.platform.windows.press({5, 790});

        QVERIFY(world.panel());
        QCOMPARE(world.dismissals, 0);
    }

    void escapeNeverClosesTheAd()
    {
        World world;

        QTest::keyClick(world.panel(), Qt::Key_Escape);

        QVERIFY(world.panel());
        QCOMPARE(world.dismissals, 0);
    }

    void theWholeLifeOfAnAdWorksByTheKeyboard()
    {
        World world;
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

    void theReasonsOpenBelowThePanelAndPointAtTheirButton()
    {
        World world;

        world.click(u"adInformation"_s);

        QVERIFY(world.disclosure());
        const auto* const reasons = qobject_cast<Popover*>(world.disclosure());
        const auto* const panel = qobject_cast<Popover*>(world.panel());
        QCOMPARE(reasons->contentRect().top(), panel->contentRect().bottom() + 1 + 8);
        QCOMPARE(reasons->contentRect().width(), 300);
        QVERIFY(world.platform.windows.activated.empty());
    }

    void theReasonsCloseWithAnotherClickOnTheButton()
    {
        World world;
        world.click(u"adInformation"_s);

        world.click(u"adInformation"_s);

        QVERIFY(!world.disclosure());
        QVERIFY(!world.controller->viewing().showDisclosure());
    }

    void theReasonsCloseWithAClickElsewhereAndOpenAgain()
    {
        World world;
        world.click(u"adInformation"_s);

        world.platform.windows.press({5, 790});
        settle();
        QVERIFY(!world.disclosure());
        QVERIFY(!world.controller->viewing().showDisclosure());
        QVERIFY(world.panel());

        world.click(u"adInformation"_s);
        QVERIFY(world.disclosure());
    }

    void theReasonsCloseWithThePanel()
    {
        World world;
        world.click(u"adInformation"_s);

        world.click(u"close"_s);

        QVERIFY(!world.disclosure());
        QCOMPARE(world.platform.windows.watches(), 0U);
    }

    void theReasonsAreThoseOfTheAd_data()
    {
        QTest::addColumn<QStringList>("categories");
        QTest::addColumn<QString>("reason");
        QTest::newRow("none") << QStringList() << u"Broad delivery matched your language. No app category was used."_s;
        QTest::newRow("some") << QStringList {u"developer_tools"_s, u"design"_s}
                              << u"Matched using consented broad categories: Developer Tools, Design. Raw app names "
                                 "were not sent."_s;
        QTest::newRow("odd ones") << QStringList {u"AI_TOOLS"_s, QString(), u"x__y"_s}
                                  << u"Matched using consented broad categories: Ai Tools, , X  Y. Raw app names were "
                                     "not sent."_s;
    }

    void theReasonsAreThoseOfTheAd()
    {
        QFETCH(const QStringList, categories);
        QFETCH(const QString, reason);
        auto ad = anAd();
        ad.matchedCategories = categories;
        World world(ad);

        world.click(u"adInformation"_s);

        QStringList texts;
        for (const auto* const label : world.disclosure()->findChildren<QLabel*>())
            texts.append(label->text());
        QCOMPARE(texts,
            (QStringList {u"Paid ad by Brightleaf Hosting"_s, reason,
                u"Change category matching from the Orvella menu. Anonymous mode disables category targeting."_s}));
    }

    void aFailedViewShowsZeroAndGreyEarnings()
    {
        World world;
        world.transport.fail(endpoints::kSessionComplete, u"No network."_s);

        world.watchToTheEnd();

        QCOMPARE(world.find<CountdownGauge>(u"gauge"_s)->remaining(), 0);
        QCOMPARE(world.finished, std::vector {std::optional<double>()});
        world.platform.clock.advance(3s);
        QVERIFY(!world.panel());
    }

    void endingItInTheMiddleLeavesNothingBehind()
    {
        World world;
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
