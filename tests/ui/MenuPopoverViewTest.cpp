#include "ui/MenuWorld.h"

#include <QLayout>
#include <QScrollArea>
#include <QScrollBar>

#include <algorithm>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The words of a view in the order in which they stand on it.
QStringList wordsFromTop(const QWidget& view)
{
    std::vector<std::pair<QPoint, QString>> found;
    const auto add = [&](const QWidget& widget, const QString& text) {
        const auto place = widget.mapTo(&view, QPoint());
        found.emplace_back(QPoint(place.y() + widget.height() / 2, place.x()), text);
    };
    for (const auto* const label : view.findChildren<QLabel*>())
        add(*label, label->text());
    for (const auto* const button : view.findChildren<QAbstractButton*>())
        add(*button, button->text());
    std::ranges::sort(found, {}, [](const auto& entry) { return std::pair(entry.first.x() / 8, entry.first.y()); });
    QStringList words;
    for (const auto& [place, text] : found)
        words.append(text);
    return words;
}

} // namespace

/// What the menu shows, and where.
class MenuPopoverViewTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void itIs340By540Points() { QCOMPARE(MenuWorld().view->size(), QSize(340, 540)); }

    void everythingStandsInItsOrder()
    {
        MenuWorld world;
        world.state->verificationUri = u"https://service.test/activate"_s;
        world.state->paidCents = 4000;
        world.state->lastEarnedCents = 12.5;
        world.offer();

        const auto words = wordsFromTop(*world.view->findChild<QScrollArea*>()->widget());

        QCOMPARE(words,
            (QStringList {u"Orvella"_s, u"$0.12"_s, u"Link pending"_s, u"earned"_s, u"Available"_s, u"$0.00"_s,
                u"Pending"_s, u"$0.00"_s, u"Lifetime"_s, u"$0.12"_s, u"Paid out"_s, u"$40.00"_s, u"Last ad"_s,
                u"12 cent"_s, anAd().advertiserName, anAd().body, u"Open ad"_s, u"Auto open ads"_s, u"Anonymous mode"_s,
                u"App category signals"_s, u"I am 18 or older"_s, u"Anonymous mode sends no app categories."_s,
                u"Advertisers never see your email, device id, raw app names, or open apps."_s,
                u"Turn off Anonymous mode to use category signals."_s, u"Open at login"_s, u"Show startup window"_s,
                u"Check for Updates..."_s, u"Link this Mac"_s}));
    }

    void theBalancesAreThoseOfTheState()
    {
        MenuWorld world;
        world.state->availableCents = 637;
        world.state->pendingCents = 175;
        world.state->lifetimeCents = 4812;
        settle();

        QCOMPARE(world.text(u"available"_s), u"$6.37"_s);
        QCOMPARE(world.text(u"pending"_s), u"$1.75"_s);
        QCOMPARE(world.text(u"lifetime"_s), u"$48.12"_s);
        QCOMPARE(world.text(u"earned"_s), u"$48.12"_s);
    }

    void whatChangedWhileItWasClosedIsThereWhenItOpens()
    {
        MenuWorld world;
        world.view->hide();
        world.state->pendingCents = 1234;
        world.state->lastError = u"no network"_s;
        settle();
        QCOMPARE(world.text(u"error"_s), QString());

        world.view->show();

        QCOMPARE(world.text(u"pending"_s), u"$12.34"_s);
        QCOMPARE(world.text(u"error"_s), u"no network"_s);
    }

    void onlyWhatWasPaidOutIsShownAsPaidOut_data()
    {
        QTest::addColumn<qint64>("cents");
        QTest::addColumn<QString>("shown");
        QTest::newRow("nothing") << qint64 {0} << QString();
        QTest::newRow("less than nothing") << qint64 {-5} << QString();
        QTest::newRow("a cent") << qint64 {1} << u"$0.01"_s;
    }

    void onlyWhatWasPaidOutIsShownAsPaidOut()
    {
        QFETCH(const qint64, cents);
        QFETCH(const QString, shown);
        MenuWorld world;

        world.state->paidCents = cents;
        settle();

        QCOMPARE(world.has(u"paidOut"_s), !shown.isEmpty());
        QCOMPARE(world.text(u"paidOut"_s), shown);
    }

    void withoutAnAdInThisRunThereIsNoLastAd() { QVERIFY(!MenuWorld().has(u"lastAd"_s)); }

    void theLastAdIsShownInWholeCentsWithTheExactOnesBesides()
    {
        MenuWorld world;

        world.state->lastEarnedCents = 12.5;
        settle();

        QCOMPARE(world.text(u"lastAd"_s), u"12 cent"_s);
        const auto* const value = world.view->findChild<QLabel*>(u"lastAd"_s);
        QCOMPARE(value->parentWidget()->parentWidget()->toolTip(), u"Exact earnings: 12.5¢ ($0.125)"_s);
        QCOMPARE(value->accessibleDescription(), u"Exact earnings: 12.5¢ ($0.125)"_s);
        QCOMPARE(world.text(u"earned"_s), u"$0.12"_s);
    }

    void theLinkLeadsToThePageUntilTheDeviceIsLinked()
    {
        MenuWorld world;
        world.state->verificationUri = u"https://service.test/activate?code=KX4M"_s;
        settle();
        QCOMPARE(world.text(u"linked"_s), u"Link pending"_s);

        world.click(u"linkDevice"_s);
        QCOMPARE(world.platform.browser.opened, std::vector {QUrl(u"https://service.test/activate?code=KX4M"_s)});

        world.state->linked = true;
        settle();
        QCOMPARE(world.text(u"linked"_s), u"Linked"_s);
        QVERIFY(!world.has(u"linkDevice"_s));
    }

    void theKeyboardGoesFromTopToBottomAlsoAroundAnOffer()
    {
        MenuWorld world({{u"anonymousMode"_s, false}, {u"ageConfirmed"_s, true}});
        world.state->verificationUri = u"https://service.test/activate"_s;
        world.offer();

        QStringList order;
        const QWidget* widget = world.button(u"openAd"_s);
        do {
            if (widget->focusPolicy() == Qt::TabFocus)
                order.append(widget->objectName());
            widget = widget->nextInFocusChain();
        } while (widget->objectName() != u"openAd"_s);

        QCOMPARE(order,
            (QStringList {u"openAd"_s, u"autoOpenAds"_s, u"anonymousMode"_s, u"appSignalConsent"_s, u"ageConfirmed"_s,
                u"openAtLogin"_s, u"showLaunchWindow"_s, u"checkForUpdates"_s, u"linkDevice"_s}));
    }

    void anAddressThatIsNoneShowsNoLink_data()
    {
        QTest::addColumn<QString>("address");
        QTest::newRow("empty") << QString();
        QTest::newRow("words") << u"not an address"_s;
        QTest::newRow("a file") << u"file:///etc/passwd"_s;
        QTest::newRow("a script") << u"javascript:alert(1)"_s;
    }

    void anAddressThatIsNoneShowsNoLink()
    {
        QFETCH(const QString, address);
        MenuWorld world;

        world.state->verificationUri = address;
        settle();

        QVERIFY(!world.has(u"linkDevice"_s));
    }

    void anOfferComesAndGoesWhileTheMenuIsOpen()
    {
        MenuWorld world;
        QVERIFY(!world.has(u"offer"_s));

        world.offer();
        QCOMPARE(world.text(u"advertiser"_s), anAd().advertiserName);
        QCOMPARE(world.text(u"adBody"_s), anAd().body);
        world.click(u"openAd"_s);
        QCOMPARE(world.adsShown, 1);

        world.state->availableAd = std::nullopt;
        settle();
        QVERIFY(!world.has(u"offer"_s));
    }

    void theOffersTextsAreShownAsTheyStand()
    {
        MenuWorld world;
        auto ad = anAd();
        ad.advertiserName = u"<b>Bold</b> & Co"_s;
        ad.body = u"<img src=x>"_s;

        world.state->availableAd = ad;
        settle();

        QCOMPARE(world.text(u"advertiser"_s), ad.advertiserName);
        QCOMPARE(world.view->findChild<QLabel*>(u"adBody"_s)->textFormat(), Qt::PlainText);
    }

    void updatesAreCheckedOnDemand()
    {
        MenuWorld world;

        world.click(u"checkForUpdates"_s);

        QCOMPARE(world.checks, 1);
    }

    void anErrorStaysUntilTheNextSuccess()
    {
        MenuWorld world;
        world.state->lastError = u"No network."_s;
        settle();
        QCOMPARE(world.text(u"error"_s), u"No network."_s);

        world.state->lastError = std::nullopt;
        settle();

        QVERIFY(!world.has(u"error"_s));
    }

    void anErrorIsNeverOutOfSight()
    {
        MenuWorld world;
        world.state->verificationUri = u"https://service.test/activate"_s;
        world.offer();

        world.state->lastError = u"https://service.test/"_s + QString(300, u'x');
        settle();

        const auto* const error = world.view->findChild<QLabel*>(u"error"_s);
        const auto place = QRect(error->mapTo(world.view.get(), QPoint()), error->size());
        QCOMPARE(place, QRect(16, 540 - 16 - 28, 340 - 32, 28));
        const auto* const scroll = world.view->findChild<QScrollArea*>();
        QCOMPARE(scroll->geometry().bottom() + 1, place.top() - 16);
        QVERIFY(scroll->verticalScrollBar()->maximum() > 0);
    }

    void whatFitsDoesNotScrollAndTheErrorFollowsIt()
    {
        MenuWorld world;
        world.state->lastError = u"No network."_s;
        settle();

        const auto* const scroll = world.view->findChild<QScrollArea*>();
        QCOMPARE(scroll->verticalScrollBar()->maximum(), 0);
        const auto* const error = world.view->findChild<QLabel*>(u"error"_s);
        const auto* const last = world.button(u"checkForUpdates"_s);
        const auto bottom = last->mapTo(world.view.get(), QPoint(0, last->height())).y() - 4;
        QCOMPARE(error->mapTo(world.view.get(), QPoint()).y(), bottom + 16);
    }

    void theNeededHeightsAreThoseOfTheDrawing_data()
    {
        QTest::addColumn<bool>("isLinked");
        QTest::addColumn<bool>("hasAllRows");
        QTest::addColumn<bool>("hasOffer");
        QTest::addColumn<int>("height");
        QTest::newRow("new, link") << false << false << false << 501;
        QTest::newRow("linked, anonymous, all rows") << true << true << false << 522;
        QTest::newRow("new, offered ad") << false << false << true << 614;
    }

    void theNeededHeightsAreThoseOfTheDrawing()
    {
        QFETCH(const bool, isLinked);
        QFETCH(const bool, hasAllRows);
        QFETCH(const bool, hasOffer);
        QFETCH(const int, height);
        MenuWorld world;
        world.state->linked = isLinked;
        world.state->verificationUri = u"https://service.test/activate"_s;
        if (hasAllRows) {
            world.state->paidCents = 1;
            world.state->lastEarnedCents = 1.0;
        }
        if (hasOffer) {
            auto ad = anAd();
            ad.body = u"Short"_s;
            world.state->availableAd = ad;
        }
        settle();

        // The note about advertisers takes two lines in every font.
        QCOMPARE(world.view->findChild<QScrollArea*>()->widget()->layout()->heightForWidth(340), height);
    }

    void everyOpeningStartsAtTheTop()
    {
        MenuWorld world;
        world.offer();
        world.state->lastError = u"No network."_s;
        settle();
        auto* const position = world.view->findChild<QScrollArea*>()->verticalScrollBar();
        position->setValue(position->maximum());
        QVERIFY(position->value() > 0);

        world.view->hide();
        world.view->show();

        QCOMPARE(position->value(), 0);
    }

    void everyControlHasANameForThoseWhoDoNotSeeIt()
    {
        MenuWorld world;
        world.state->verificationUri = u"https://service.test/activate"_s;
        world.offer();

        for (auto* const control : world.view->findChildren<QAbstractButton*>()) {
            QVERIFY2(
                !control->text().isEmpty() || !control->accessibleName().isEmpty(), qPrintable(control->objectName()));
            QVERIFY2(!control->objectName().isEmpty(), qPrintable(control->text()));
        }
    }
};

QTEST_MAIN(MenuPopoverViewTest)

#include "MenuPopoverViewTest.moc"
