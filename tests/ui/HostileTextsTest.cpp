#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/RawAnswers.h"
#include "support/Samples.h"
#include "support/ShownWindow.h"
#include "ui/LaunchWindowController.h"
#include "ui/MenuPopoverView.h"
#include "ui/ad/AdDisclosure.h"
#include "ui/ad/AdWindowController.h"
#include "ui/controls/TextLabel.h"

#include <QAbstractButton>
#include <QAccessible>
#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QScreen>
#include <QTest>

#include <algorithm>
#include <cmath>
#include <limits>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qsizetype kMegabyte = 1'000'000;
/// Far more than it takes and far less than a viewer waits.
constexpr int kPatienceMs = 20'000;

/// An offer in which the service has written this into every text.
AvailableAd adOf(const QString& text)
{
    auto ad = anAd();
    const auto write = [&]<class Member>(Member AvailableAd::* member) {
        if constexpr (std::is_same_v<Member, QString>)
            ad.*member = text;
        else if constexpr (std::is_same_v<Member, QStringList>)
            ad.*member = {text, text};
    };
    std::apply([&](const auto&... fields) { (write(fields.member), ...); }, AvailableAd::fields());
    return ad;
}

/// Everything that a viewer can have on the screen, with such an offer.
struct World {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppState> state;
    Look look {platform.look};
    std::unique_ptr<MenuPopoverView> menu;
    std::unique_ptr<AdWindowController> ad;
    std::unique_ptr<LaunchWindowController> launch;

    explicit World(const QString& text)
        : World(adOf(text), aWallet().wallet, text)
    {
    }

    World(const AvailableAd& offer, const Wallet& wallet, const QString& text = {})
    {
        state = std::make_unique<AppState>(platform.lend(), transport);
        state->activationCode = text;
        state->verificationUri = text;
        state->lastError = text;
        state->availableAd = offer;
        state->availableCents = wallet.availableCents;
        state->pendingCents = wallet.pendingCents;
        state->paidCents = wallet.paidCents;
        state->lifetimeCents = wallet.lifetimeCents;
        state->lastEarnedCents = offer.viewerEarnCentsExact;
        menu = std::make_unique<MenuPopoverView>(look, *state, platform.lend(), MenuPopoverView::Actions {});
        menu->show();
        launch = std::make_unique<LaunchWindowController>(look, *state, platform.lend());
        launch->show();
        ad = std::make_unique<AdWindowController>(look, offer, state->api(), true, platform.lend(),
            AdWindowController::OwnerActions {[] {}, [](std::optional<double>) {}, [](const Failure&) {}});
        ad->show(Popover::Keyboard::left);
        settle();
        shownWindow(u"adPanel"_s)->findChild<QAbstractButton*>(u"adInformation"_s)->click();
        settle();
        for (auto* const shown : windows())
            static_cast<void>(shown->grab());
    }

    [[nodiscard]] static QWidgetList windows()
    {
        auto windows = QApplication::topLevelWidgets();
        windows.removeIf([](const QWidget* window) { return !window->isVisible(); });
        return windows;
    }

    [[nodiscard]] static QWidgetList widgets()
    {
        auto all = windows();
        for (const auto* const window : windows())
            all.append(window->findChildren<QWidget*>());
        return all;
    }
};

} // namespace

/// What advertisers and the service write, at its worst, in everything that a viewer sees of it.
class HostileTextsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aMegabyteNeitherHangsNorOutgrowsTheScreen_data()
    {
        QTest::addColumn<QString>("text");
        const auto megabyteOf = [](const QString& part) { return part.repeated(kMegabyte / part.size()); };
        QTest::newRow("words") << megabyteOf(u"buy now "_s);
        QTest::newRow("one word") << megabyteOf(u"W"_s);
        QTest::newRow("lines") << megabyteOf(u"a\n\u2028"_s);
        QTest::newRow("to the left") << megabyteOf(u"\u05d0\u05d1\u05d2 "_s);
        QTest::newRow("overrides") << megabyteOf(u"\u202ea"_s);
        QTest::newRow("accents") << u'a' + megabyteOf(u"\u0301"_s);
        QTest::newRow("pictures") << megabyteOf(u"\U0001F4B0"_s);
    }

    void aMegabyteNeitherHangsNorOutgrowsTheScreen()
    {
        QFETCH(const QString, text);
        QElapsedTimer time;
        time.start();

        const World world(text);

        QVERIFY2(time.elapsed() < kPatienceMs, qPrintable(QString::number(time.elapsed())));
        QCOMPARE(World::windows().size(), 4);
        checkThatTheyFitTheScreen();
    }

    void theGreatestAndTheLeastNumbersAreShown_data()
    {
        QTest::addColumn<qint64>("number");
        QTest::addColumn<double>("cents");
        QTest::newRow("greatest") << std::numeric_limits<qint64>::max() << std::nexttoward(0x1p63, 0.0);
        QTest::newRow("least") << std::numeric_limits<qint64>::min() << std::numeric_limits<double>::lowest();
        QTest::newRow("smallest") << qint64 {-1} << std::numeric_limits<double>::denorm_min();
    }

    void theGreatestAndTheLeastNumbersAreShown()
    {
        QFETCH(const qint64, number);
        QFETCH(const double, cents);
        auto ad = anAd();
        ad.requiredSeconds = number;
        ad.viewerEarnCentsExact = cents;

        const World world(ad, {number, number, number, number});

        QCOMPARE(World::windows().size(), 4);
        QCOMPARE(world.menu->findChild<QLabel*>(u"available"_s)->text(), world.platform.locale.usDollars(number));
        checkThatTheyFitTheScreen();
    }

    void aReasonOfEveryCategoryIsNotCut()
    {
        auto ad = anAd();
        // There are as many, and this is the longest.
        ad.matchedCategories = QStringList(18, u"cloud_infrastructure"_s);
        FakePlatform platform;
        const Look look(platform.look);
        const AdDisclosure disclosure(look, ad);
        const auto* const reason = disclosure.findChildren<QLabel*>().at(1);

        const auto whole = std::unique_ptr<TextLabel>(
            label(look, TypeStyle::callout, reason->text(), Tone::primary, TextLabel::Lines::all))
                               ->heightForWidth(268);

        QVERIFY(reason->text().endsWith(u". Raw app names were not sent."_s));
        QCOMPARE(reason->heightForWidth(268), whole);
        QVERIFY2(whole < 15 * look.lineHeight(TypeStyle::callout), qPrintable(QString::number(whole)));
    }

    void whateverItSaysItIsShownAsPlainText_data()
    {
        QTest::addColumn<QString>("text");
        QTest::addColumn<QString>("shown");
        const auto asItIs = [](const char* name, const QString& text) { QTest::newRow(name) << text << text; };
        asItIs("bold", u"<b>Evil</b>"_s);
        asItIs("link", u"<a href=\"https://evil.test/\">Evil</a>"_s);
        asItIs("picture", u"<img src=\"%1\"> Evil"_s.arg(m_pictures.url().toString()));
        asItIs("document", u"<!DOCTYPE html><html><body>Evil</body></html>"_s);
        asItIs("entities", u"&lt;Evil&gt; &amp; &Evil"_s);
        asItIs("places", u"Evil %1 %2 %n %L1 %s"_s);
        asItIs("marks of direction", u"Evil\u200e \u05d0\u200f"_s);
        asItIs("joiners", u"Evil \U0001F468\u200d\U0001F469 \u0645\u06cc\u200c\u0631"_s);
        asItIs("half a character", u"Evil "_s + QChar(0xd800));
        QTest::newRow("override") << u"Evil\u202e.sknil\u202c"_s << u"Evil.sknil"_s;
        QTest::newRow("isolates") << u"\u2067Evil\u2069\u2069\u2066"_s << u"Evil"_s;
        QTest::newRow("control") << u"Ev\u0000i\u0007l\u001b[31m\u009b"_s << u"Evil[31m"_s;
    }

    void whateverItSaysItIsShownAsPlainText()
    {
        QFETCH(const QString, text);
        QFETCH(const QString, shown);

        const World world(text);

        auto* const ad = shownWindow(u"adPanel"_s)->findChild<QWidget*>(u"openAd"_s);
        QCOMPARE(QAccessible::queryAccessibleInterface(ad)->text(QAccessible::Name), u"Open ad: "_s + shown);
        for (const auto& name : {u"advertiser"_s, u"adBody"_s, u"error"_s})
            QCOMPARE(world.menu->findChild<QLabel*>(name)->text(), shown);
        const auto told = shownWindow(u"adDisclosure"_s)->findChildren<QLabel*>();
        QCOMPARE(told.at(0)->text(), u"Paid ad by "_s + shown);
        QVERIFY(told.at(1)->text().startsWith(u"Matched using consented broad categories: "_s));
        QVERIFY(told.at(1)->text().endsWith(u". Raw app names were not sent."_s));
        for (const auto* const widget : World::widgets())
            checkThatNothingIsTakenForMarkup(*widget);
        QCOMPARE(m_pictures.connections(), 0U);
    }

private:
    static void checkThatTheyFitTheScreen()
    {
        const auto room = QGuiApplication::primaryScreen()->availableSize();
        for (const auto* const window : World::windows()) {
            QVERIFY2(window->width() <= room.width() && window->height() <= room.height(),
                qPrintable(u"%1: %2 x %3"_s.arg(window->objectName()).arg(window->width()).arg(window->height())));
        }
    }

    static void checkThatNothingIsTakenForMarkup(const QWidget& widget)
    {
        if (const auto* const label = qobject_cast<const QLabel*>(&widget))
            QCOMPARE(label->textFormat(), Qt::PlainText);
        // These are the toolkit's to draw, and it guesses.
        for (const auto& text : {widget.toolTip(), widget.statusTip(), widget.whatsThis()}) {
            QVERIFY2(!Qt::mightBeRichText(text), qPrintable(text));
            QVERIFY2(!text.contains(u"Evil"_s), qPrintable(text));
        }
        QVERIFY2(!widget.windowTitle().contains(u"Evil"_s), qPrintable(widget.windowTitle()));
    }

    RawServer m_pictures {answer::silence()};
};

QTEST_MAIN(HostileTextsTest)

#include "HostileTextsTest.moc"
