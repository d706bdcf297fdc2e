#include "api/Endpoints.h"
#include "ui/ad/ViewingWorld.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// What becomes of a click on the ad, and which pages it may open.
class AdClickTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aClickIsRecordedAndOpensTheAnsweredPage()
    {
        ViewingWorld world;
        world.start();

        world.viewing->openAd();
        settle();

        QCOMPARE(world.transport.requests(endpoints::kClick).front().body,
            (Json::Object {{u"sessionId"_s, u"session-1"_s}}));
        QCOMPARE(world.platform.browser.opened, std::vector {QUrl(u"https://brightleaf.test/landing?click=1"_s)});
        QCOMPARE(world.linksOpened, 1);
    }

    void aClickDoesNotStopTheCountdown()
    {
        ViewingWorld world;
        const auto click = world.transport.hold(endpoints::kClick);
        world.start();

        world.viewing->openAd();
        world.platform.clock.advance(ViewingWorld::kRequired);

        QVERIFY(click.isAwaited());
        QVERIFY(world.viewing->completed());
        world.viewing.reset();
        QCOMPARE(world.transport.waiting(), 0);
    }

    void aClickUnderWayWhenThePanelClosesStillOpensThePage()
    {
        ViewingWorld world;
        auto click = world.transport.hold(endpoints::kClick);
        world.start();
        world.viewing->openAd();

        world.viewing->dismiss();
        click.answer(200, aClick());

        QCOMPARE(world.platform.browser.opened.size(), 1U);
    }

    void aClickBeforeTheSessionOpensTheAdsOwnPageAndRecordsNothing()
    {
        ViewingWorld world;
        const auto session = world.transport.hold(endpoints::kSessionStart);
        world.start();

        world.viewing->openAd();
        settle();

        QCOMPARE(world.platform.browser.opened, std::vector {QUrl(u"https://brightleaf.test/offer"_s)});
        QCOMPARE(world.transport.count(endpoints::kClick), 0);
        QCOMPARE(world.linksOpened, 1);
    }

    void aClickAfterAFailedStartOpensTheAdsOwnPage()
    {
        ViewingWorld world;
        world.transport.fail(endpoints::kSessionStart, u"No network."_s);
        world.start();

        world.viewing->openAd();

        QCOMPARE(world.platform.browser.opened.size(), 1U);
        QCOMPARE(world.transport.count(endpoints::kClick), 0);
    }

    void aFailedClickDoesNothing()
    {
        ViewingWorld world;
        world.transport.fail(endpoints::kClick, u"No network."_s);
        world.start();

        world.viewing->openAd();
        settle();

        QVERIFY(world.platform.browser.opened.empty());
        QCOMPARE(world.linksOpened, 0);
        QVERIFY(world.finished.empty());
    }

    void anAddressThatIsNoWebAddressIsNotOpened_data()
    {
        QTest::addColumn<QString>("address");
        for (const auto* const address : {"", "not an address", "brightleaf.test", "/offer", "file:///etc/passwd",
                 "mailto:a@b.test", "https:///x", "javascript:alert(1)", "vnc://host", "https://a b.test"})
            QTest::addRow("%s", address) << QString::fromLatin1(address);
    }

    void anAddressThatIsNoWebAddressIsNotOpened()
    {
        QFETCH(QString, address);
        ViewingWorld world;
        world.transport.answer(endpoints::kClick, ClickResponse {address});
        world.start();

        world.viewing->openAd();
        settle();

        QVERIFY(world.platform.browser.opened.empty());
        QCOMPARE(world.linksOpened, 0);
    }

    void anAddressOfTheAdThatIsNoWebAddressIsNotOpenedEither()
    {
        ViewingWorld world;
        auto ad = anAd();
        ad.targetUrl = u"not an address"_s;
        world.transport.fail(endpoints::kSessionStart, u"No network."_s);
        world.start(ad);

        world.viewing->openAd();
        settle();

        QVERIFY(world.platform.browser.opened.empty());
        QCOMPARE(world.linksOpened, 0);
    }

    void aBrowserThatRefusesDoesNotBringThePanelBack()
    {
        ViewingWorld world;
        world.platform.browser.succeeds = false;
        world.start();

        world.viewing->openAd();
        settle();

        QCOMPARE(world.platform.browser.opened.size(), 1U);
        QCOMPARE(world.linksOpened, 0);
    }
};

QTEST_GUILESS_MAIN(AdClickTest)

#include "AdClickTest.moc"
