#include "ui/ad/AdWindowWorld.h"

#include <QLabel>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

/// Why this ad is shown, which the panel tells on a second one.
class AdReasonsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theReasonsOpenBelowThePanelAndPointAtTheirButton()
    {
        AdWindowWorld world;

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
        AdWindowWorld world;
        world.click(u"adInformation"_s);

        world.click(u"adInformation"_s);

        QVERIFY(!world.disclosure());
        QVERIFY(!world.controller->viewing().showDisclosure());
    }

    void theReasonsCloseWithAClickElsewhereAndOpenAgain()
    {
        AdWindowWorld world;
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
        AdWindowWorld world;
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
        AdWindowWorld world(ad);

        world.click(u"adInformation"_s);

        QStringList texts;
        for (const auto* const label : world.disclosure()->findChildren<QLabel*>())
            texts.append(label->text());
        QCOMPARE(texts,
            (QStringList {u"Paid ad by Brightleaf Hosting"_s, reason,
                u"Change category matching from the Orvella menu. Anonymous mode disables category targeting."_s}));
    }
};

QTEST_MAIN(AdReasonsTest)

#include "AdReasonsTest.moc"
