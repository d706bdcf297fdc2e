#include "sandbox/Campaigns.h"

#include "sandbox/StrictObject.h"

#include <QFile>
#include <QRegularExpression>
#include <QSet>

#include <algorithm>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kGreatestCharge = 10'000;
constexpr qsizetype kLongestBody = 500;
constexpr qsizetype kLongestText = 2000;

QString identifier(StrictObject& object, QSet<QString>& taken)
{
    // It is part of an address.
    static const QRegularExpression kIdentifier(u"\\A[a-z0-9]+(-[a-z0-9]+)*\\z"_s);
    const auto id = object.text(u"id"_s);
    if (!kIdentifier.match(id).hasMatch())
        object.complain(object.placeOf(u"id"_s) + u" is not made of a-z, 0-9 and single hyphens"_s);
    if (taken.contains(id))
        object.complain(object.placeOf(u"id"_s) + u" is used twice"_s);
    taken.insert(id);
    return id;
}

QString language(StrictObject& object)
{
    static const QRegularExpression kLanguage(u"\\A[a-z]{2,3}\\z"_s);
    const auto code = object.text(u"language"_s);
    if (!kLanguage.match(code).hasMatch())
        object.complain(object.placeOf(u"language"_s) + u" is not a language code of two or three letters"_s);
    return code;
}

Amount viewerEarn(StrictObject& object, Amount charge)
{
    const auto amount = Amount::ofExactCents(object.number(u"viewerEarnCents"_s));
    if (!amount)
        object.complain(object.placeOf(u"viewerEarnCents"_s) + u" has more than six decimals or is negative"_s);
    else if (*amount > charge)
        object.complain(object.placeOf(u"viewerEarnCents"_s) + u" is more than the advertiser pays"_s);
    return amount.value_or(Amount());
}

/// The identifiers that are taken already.
struct Taken {
    QSet<QString> campaigns;
    QSet<QString> creatives;
};

Creative readCreative(const Json& value, const QString& place, Taken& taken, QString& problem)
{
    StrictObject object(value, place, problem);
    Creative creative;
    creative.id = identifier(object, taken.creatives);
    creative.language = language(object);
    creative.body = object.text(u"body"_s, kLongestBody);
    creative.ctaLabel = object.text(u"ctaLabel"_s);
    object.end();
    return creative;
}

Campaign readCampaign(const Json& value, const QString& place, Taken& taken, QString& problem)
{
    StrictObject object(value, place, problem);
    Campaign campaign;
    campaign.id = identifier(object, taken.campaigns);
    campaign.advertiserName = object.text(u"advertiserName"_s);
    campaign.categories = object.categories(u"categories"_s);
    campaign.requiredSeconds = object.integer(u"requiredSeconds"_s, 0, Campaign::kLongestRequirement);
    campaign.advertiserCharge = Amount::ofCents(object.integer(u"advertiserChargeCents"_s, 0, kGreatestCharge));
    campaign.viewerEarn = viewerEarn(object, campaign.advertiserCharge);
    campaign.fallbackLanguage = object.optionalText(u"fallbackLanguage"_s);
    campaign.headline = object.text(u"headline"_s);
    campaign.text = object.text(u"text"_s, kLongestText);
    const auto creativesPlace = object.placeOf(u"creatives"_s);
    qsizetype index = 0;
    for (const auto& creative : object.array(u"creatives"_s))
        campaign.creatives.push_back(readCreative(creative, creativesPlace + u"[%1]"_s.arg(index++), taken, problem));
    if (campaign.creatives.empty())
        object.complain(creativesPlace + u" is empty"_s);
    const auto speaksFallback = std::ranges::any_of(campaign.creatives,
        [&campaign](const Creative& creative) { return creative.language == campaign.fallbackLanguage; });
    if (campaign.fallbackLanguage && !speaksFallback)
        object.complain(object.placeOf(u"fallbackLanguage"_s) + u" is the language of no creative"_s);
    object.end();
    return campaign;
}

} // namespace

Campaigns::Campaigns(std::vector<Campaign> campaigns)
    : m_campaigns(std::move(campaigns))
{
}

Result<Campaigns> Campaigns::parse(const QByteArray& json)
{
    const auto value = Json::parse(json);
    if (!value)
        return std::unexpected(value.error());
    QString problem;
    StrictObject object(*value, {}, problem);
    std::vector<Campaign> campaigns;
    Taken taken;
    for (const auto& campaign : object.array(u"campaigns"_s)) {
        campaigns.push_back(readCampaign(campaign, u"campaigns[%1]"_s.arg(campaigns.size()), taken, problem));
    }
    object.end();
    if (!problem.isEmpty())
        return failed(Failure::Kind::undecodable, problem);
    return Campaigns(std::move(campaigns));
}

Campaigns Campaigns::seeded()
{
    QFile file(u":/sandbox/campaigns.json"_s);
    if (!file.open(QFile::ReadOnly))
        qFatal("The built-in campaigns are missing.");
    auto campaigns = parse(file.readAll());
    if (!campaigns)
        qFatal("The built-in campaigns cannot be read: %s.", qUtf8Printable(campaigns.error().description));
    return *std::move(campaigns);
}

const Campaign* Campaigns::find(const QString& campaignId) const
{
    const auto found = std::ranges::find(m_campaigns, campaignId, &Campaign::id);
    return found == m_campaigns.end() ? nullptr : &*found;
}

void Campaigns::requireSeconds(qint64 seconds)
{
    for (auto& campaign : m_campaigns)
        campaign.requiredSeconds = seconds;
}

} // namespace orvella::sandbox
