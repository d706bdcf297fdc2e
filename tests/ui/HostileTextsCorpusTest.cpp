#include "core/AppState.h"
#include "support/Corpus.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "ui/MenuPopoverView.h"
#include "ui/ShownText.h"
#include "ui/ad/AdDisclosure.h"

#include <QLabel>
#include <QRegularExpression>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// Strings that are known to break programs, as an advertiser's.
class HostileTextsCorpusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theMenuShowsThemAsTheyStand()
    {
        FakePlatform platform;
        FakeTransport transport;
        AppState state(platform.lend(), transport);
        const Look look(platform.look);
        MenuPopoverView menu(look, state, platform.lend(), {});
        menu.show();

        for (const auto& string : m_strings) {
            auto ad = anAd();
            ad.advertiserName = string;
            ad.body = string;

            state.availableAd = ad;
            settle();
            static_cast<void>(menu.findChild<QWidget*>(u"offer"_s)->grab());

            for (const auto& name : {u"advertiser"_s, u"adBody"_s}) {
                const auto* const label = menu.findChild<QLabel*>(name);
                QCOMPARE(label->text(), shownText(string));
                QCOMPARE(label->textFormat(), Qt::PlainText);
            }
        }
    }

    void theDisclosureShowsThemAsTheyStand()
    {
        FakePlatform platform;
        const Look look(platform.look);

        for (const auto& string : m_strings) {
            auto ad = anAd();
            ad.advertiserName = string;
            ad.matchedCategories = {string, string};

            AdDisclosure disclosure(look, ad);
            static_cast<void>(disclosure.grab());

            QCOMPARE(disclosure.findChildren<QLabel*>().at(0)->text(), u"Paid ad by "_s + shownText(string));
            QVERIFY(disclosure.height() < 600);
        }
    }

    void nothingIsLeftOutOfThemButWhatTurnsTheDirectionAndControls()
    {
        const QRegularExpression leftOut(u"[\\x{202a}-\\x{202e}\\x{2066}-\\x{2069}]|(?![\\s\\x{85}])\\p{Cc}"_s);

        for (const auto& string : m_strings)
            QCOMPARE(shownText(string), QString(string).remove(leftOut));
    }

private:
    const QStringList m_strings = Corpus::hostileStrings();
};

QTEST_MAIN(HostileTextsCorpusTest)

#include "HostileTextsCorpusTest.moc"
