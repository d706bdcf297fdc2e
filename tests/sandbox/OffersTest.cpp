#include "sandbox/Offers.h"

#include <QTest>

using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;

namespace {

QByteArray campaign(const char* id, const char* categories, const char* creatives, const char* more = "")
{
    return R"({"id":")" + QByteArray(id) + R"(","advertiserName":"A","requiredSeconds":15,"advertiserChargeCents":3,)"
        + R"("viewerEarnCents":2,"headline":"H","text":"T",)" + more + R"("categories":)" + categories
        + R"(,"creatives":[)" + creatives + "]}";
}

QByteArray creative(const char* id, const char* language)
{
    return R"({"id":")" + QByteArray(id) + R"(","language":")" + language + R"(","body":"B","ctaLabel":"C"})";
}

Campaigns campaignsOf(const QByteArrayList& list)
{
    auto campaigns = Campaigns::parse(R"({"campaigns":[)" + list.join(',') + "]}");
    if (!campaigns)
        qFatal("%s", qPrintable(campaigns.error().description));
    return *std::move(campaigns);
}

QString offered(const Campaigns& campaigns, const Audience& audience, const ViewingHistory& history = {})
{
    const auto offer = chooseOffer(campaigns, audience, history);
    return offer ? offer->creative->id : QString();
}

} // namespace

class OffersTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aViewerIsOfferedTheirOwnLanguage()
    {
        const auto campaigns =
            campaignsOf({campaign("a", "[]", creative("a-en", "en") + ',' + creative("a-de", "de"))});

        QCOMPARE(offered(campaigns, {u"de"_s, {}}), u"a-de"_s);
        QCOMPARE(offered(campaigns, {u"en"_s, {}}), u"a-en"_s);
    }

    void aCampaignInAnotherLanguageIsNotOffered()
    {
        const auto campaigns = campaignsOf({campaign("a", "[]", creative("a-en", "en"))});

        QCOMPARE(offered(campaigns, {u"ja"_s, {}}), QString());
    }

    void aCampaignFallsBackToTheLanguageThatItNames()
    {
        const auto campaigns = campaignsOf({campaign(
            "a", "[]", creative("a-de", "de") + ',' + creative("a-en", "en"), R"("fallbackLanguage":"en",)")});

        QCOMPARE(offered(campaigns, {u"ja"_s, {}}), u"a-en"_s);
        QCOMPARE(offered(campaigns, {u"de"_s, {}}), u"a-de"_s);
    }

    void aCampaignWithCategoriesNeedsOneOfThem()
    {
        const auto campaigns =
            campaignsOf({campaign("a", R"(["ai_tools","writing_content"])", creative("a-en", "en"))});

        QCOMPARE(offered(campaigns, {u"en"_s, {}}), QString());
        QCOMPARE(offered(campaigns, {u"en"_s, {u"design_tools"_s}}), QString());
        QCOMPARE(offered(campaigns, {u"en"_s, {u"writing_content"_s}}), u"a-en"_s);
    }

    void theMatchedCategoriesAreThoseOfBothSides()
    {
        const auto campaigns =
            campaignsOf({campaign("a", R"(["ai_tools","ecommerce","writing_content"])", creative("a-en", "en"))});

        const auto offer =
            chooseOffer(campaigns, {u"en"_s, {u"ai_tools"_s, u"communication"_s, u"writing_content"_s}}, {});

        QVERIFY(offer);
        QCOMPARE(offer->matchedCategories, QStringList({u"ai_tools"_s, u"writing_content"_s}));
    }

    void aCampaignForEveryoneMatchesNoCategory()
    {
        const auto campaigns = campaignsOf({campaign("a", "[]", creative("a-en", "en"))});

        const auto offer = chooseOffer(campaigns, {u"en"_s, {u"ai_tools"_s}}, {});

        QVERIFY(offer);
        QCOMPARE(offer->matchedCategories, QStringList());
    }

    void theCampaignCreditedLongestAgoIsNext()
    {
        const auto campaigns = campaignsOf({
            campaign("a", "[]", creative("a-en", "en")),
            campaign("b", "[]", creative("b-en", "en")),
            campaign("c", "[]", creative("c-en", "en")),
        });
        const Audience audience {u"en"_s, {}};

        QCOMPARE(offered(campaigns, audience), u"a-en"_s);
        QCOMPARE(offered(campaigns, audience, {{{u"a"_s, 1}}, {}, {}}), u"b-en"_s);
        QCOMPARE(offered(campaigns, audience, {{{u"a"_s, 3}, {u"b"_s, 2}, {u"c"_s, 1}}, {}, {}}), u"c-en"_s);
        QCOMPARE(offered(campaigns, audience, {{{u"a"_s, 1}, {u"b"_s, 3}, {u"c"_s, 2}}, {}, {}}), u"a-en"_s);
    }

    void aCampaignThatWasOnlyStartedWaitsBehindThoseThatWereNot()
    {
        const auto campaigns = campaignsOf({
            campaign("a", "[]", creative("a-en", "en")),
            campaign("b", "[]", creative("b-en", "en")),
        });

        QCOMPARE(offered(campaigns, {u"en"_s, {}}, {{}, {{u"a"_s, 1}}, {}}), u"b-en"_s);
        QCOMPARE(offered(campaigns, {u"en"_s, {}}, {{{u"b"_s, 1}}, {{u"a"_s, 2}, {u"b"_s, 1}}, {}}), u"a-en"_s);
    }

    void theCreativesOfACampaignTakeTurns()
    {
        const auto campaigns = campaignsOf({campaign("a", "[]", creative("one", "en") + ',' + creative("two", "en"))});

        QCOMPARE(offered(campaigns, {u"en"_s, {}}), u"one"_s);
        QCOMPARE(offered(campaigns, {u"en"_s, {}}, {{}, {}, {{u"one"_s, 1}}}), u"two"_s);
        QCOMPARE(offered(campaigns, {u"en"_s, {}}, {{}, {}, {{u"one"_s, 1}, {u"two"_s, 2}}}), u"one"_s);
    }
};

QTEST_GUILESS_MAIN(OffersTest)

#include "OffersTest.moc"
