#include "sandbox/Campaigns.h"
#include "base/Json.h"

#include <QSet>
#include <QTest>

#include <algorithm>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;

namespace {

const QByteArray kCreative = R"({"id":"a-en","language":"en","body":"Look.","ctaLabel":"Go"})";

/// A file with one good campaign in which one text is replaced by another.
QByteArray fileWith(const QByteArray& what, const QByteArray& replacement)
{
    auto file = R"({"campaigns":[{"id":"a","advertiserName":"A","categories":["design_tools","productivity"],)"
                R"("requiredSeconds":15,"advertiserChargeCents":3,"viewerEarnCents":2.1,"headline":"H","text":"T",)"
                R"("creatives":[)"
        + kCreative + "]}]}";
    if (!file.contains(what))
        qFatal("The file has no such text.");
    return file.replace(what, replacement);
}

} // namespace

class CampaignsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aFileIsReadInFull()
    {
        const auto campaigns = Campaigns::parse(fileWith(R"("headline")", R"("fallbackLanguage":"en","headline")"));

        QVERIFY2(campaigns.has_value(), campaigns ? "" : qPrintable(campaigns.error().description));
        QCOMPARE(campaigns->all().size(), 1U);
        const auto& campaign = campaigns->all().front();
        QCOMPARE(campaign.id, u"a"_s);
        QCOMPARE(campaign.advertiserName, u"A"_s);
        QCOMPARE(campaign.categories, QStringList({u"design_tools"_s, u"productivity"_s}));
        QCOMPARE(campaign.requiredSeconds, 15);
        QCOMPARE(campaign.advertiserCharge.microCents(), 3'000'000);
        QCOMPARE(campaign.viewerEarn.microCents(), 2'100'000);
        QCOMPARE(campaign.platformFee().microCents(), 900'000);
        QCOMPARE(campaign.fallbackLanguage, std::optional(u"en"_s));
        QCOMPARE(campaign.headline, u"H"_s);
        QCOMPARE(campaign.text, u"T"_s);
        QCOMPARE(campaign.creatives.size(), 1U);
        QCOMPARE(campaign.creatives.front().id, u"a-en"_s);
        QCOMPARE(campaign.creatives.front().language, u"en"_s);
        QCOMPARE(campaign.creatives.front().body, u"Look."_s);
        QCOMPARE(campaign.creatives.front().ctaLabel, u"Go"_s);
        QCOMPARE(campaigns->find(u"a"_s), &campaign);
        QVERIFY(!campaigns->find(u"b"_s));
    }

    void anErrorNamesItsPlace_data()
    {
        QTest::addColumn<QByteArray>("file");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char* name, const QByteArray& file, const QString& expected) {
            QTest::newRow(name) << file << expected;
        };
        row("not JSON", "{", u"The text is not valid JSON."_s);
        row("not an object", "[]", u"the text is not an object"_s);
        row("no campaigns", "{}", u"campaigns is missing"_s);
        row("more than campaigns", R"({"campaigns":[],"x":1})", u"x is not expected"_s);
        row("no campaign object", R"({"campaigns":[1]})", u"campaigns[0] is not an object"_s);
        row("missing", fileWith(R"("headline":"H",)", ""), u"campaigns[0].headline is missing"_s);
        row("mistyped", fileWith(R"("headline":"H")", R"("headline":1)"), u"campaigns[0].headline is not a text"_s);
        row("empty", fileWith(R"("headline":"H")", R"("headline":"")"), u"campaigns[0].headline is empty"_s);
        row("unknown", fileWith(R"("headline")", R"("colour":1,"headline")"), u"campaigns[0].colour is not expected"_s);
        row("no address", fileWith(R"("id":"a")", R"("id":"a/b")"),
            u"campaigns[0].id is not made of a-z, 0-9 and single hyphens"_s);
        row("no seconds", fileWith(":15", ":15.5"), u"campaigns[0].requiredSeconds is not an integer"_s);
        row("negative seconds", fileWith(":15", ":-1"), u"campaigns[0].requiredSeconds is not within 0 and 3600"_s);
        row("half a cent charged", fileWith("Cents\":3", "Cents\":3.5"),
            u"campaigns[0].advertiserChargeCents is not an integer"_s);
        row("too fine", fileWith("2.1", "2.1000001"),
            u"campaigns[0].viewerEarnCents has more than six decimals or is negative"_s);
        row("more than is paid", fileWith("2.1", "3.000001"),
            u"campaigns[0].viewerEarnCents is more than the advertiser pays"_s);
        row("unknown category", fileWith("productivity", "toys"),
            u"campaigns[0].categories holds an unknown category"_s);
        row("unsorted categories", fileWith(R"("design_tools","productivity")", R"("productivity","design_tools")"),
            u"campaigns[0].categories is not sorted, each category once"_s);
        row("a category twice", fileWith("productivity", "design_tools"),
            u"campaigns[0].categories is not sorted, each category once"_s);
        row("no creative", fileWith(kCreative, ""), u"campaigns[0].creatives is empty"_s);
        row("a creative twice", fileWith(kCreative, kCreative + ',' + kCreative),
            u"campaigns[0].creatives[1].id is used twice"_s);
        row("no language", fileWith(R"("language":"en")", R"("language":"English")"),
            u"campaigns[0].creatives[0].language is not a language code of two or three letters"_s);
        row("a fallback that is not spoken", fileWith(R"("headline")", R"("fallbackLanguage":"de","headline")"),
            u"campaigns[0].fallbackLanguage is the language of no creative"_s);
    }

    void anErrorNamesItsPlace()
    {
        QFETCH(QByteArray, file);
        QFETCH(QString, expected);

        const auto campaigns = Campaigns::parse(file);

        QVERIFY(!campaigns);
        QCOMPARE(campaigns.error().description, expected);
    }

    void theBuiltInCampaignsSpeakSeveralLanguagesAndSomeAreForEveryone()
    {
        const auto campaigns = Campaigns::seeded();

        QSet<QString> languages;
        for (const auto& campaign : campaigns.all()) {
            for (const auto& creative : campaign.creatives)
                languages.insert(creative.language);
        }
        QVERIFY(campaigns.all().size() >= 8);
        for (const auto& language : {u"en"_s, u"de"_s, u"fr"_s, u"es"_s, u"pt"_s, u"ja"_s})
            QVERIFY2(languages.contains(language), qPrintable(language));
        const auto forEveryone = std::ranges::count_if(
            campaigns.all(), [](const Campaign& campaign) { return campaign.categories.isEmpty(); });
        QVERIFY(forEveryone >= 2);
        QVERIFY(forEveryone <= std::ssize(campaigns.all()) - 2);
    }

    void everyCampaignCanBeMadeShort()
    {
        auto campaigns = Campaigns::seeded();

        campaigns.requireSeconds(2);

        for (const auto& campaign : campaigns.all())
            QCOMPARE(campaign.requiredSeconds, 2);
    }
};

QTEST_GUILESS_MAIN(CampaignsTest)

#include "CampaignsTest.moc"
