#include "sandbox/Offers.h"

#include <algorithm>
#include <tuple>

namespace orvella::sandbox {

namespace {

const Creative* creativeIn(const Campaign& campaign, const QString& language, const ViewingHistory& history)
{
    const Creative* chosen = nullptr;
    for (const auto& creative : campaign.creatives) {
        if (creative.language != language)
            continue;
        const auto since = history.lastStartOfCreative.value(creative.id);
        if (!chosen || since < history.lastStartOfCreative.value(chosen->id))
            chosen = &creative;
    }
    return chosen;
}

const Creative* creativeFor(const Campaign& campaign, const QString& language, const ViewingHistory& history)
{
    const auto* const spoken = creativeIn(campaign, language, history);
    if (spoken || !campaign.fallbackLanguage)
        return spoken;
    return creativeIn(campaign, *campaign.fallbackLanguage, history);
}

} // namespace

std::optional<Offer> chooseOffer(const Campaigns& campaigns, const Audience& audience, const ViewingHistory& history)
{
    const auto since = [&history](const Campaign& campaign) {
        return std::tuple(
            history.lastCreditOfCampaign.value(campaign.id), history.lastStartOfCampaign.value(campaign.id));
    };
    std::optional<Offer> chosen;
    for (const auto& campaign : campaigns.all()) {
        QStringList matched;
        std::ranges::copy_if(campaign.categories, std::back_inserter(matched),
            [&audience](const QString& category) { return audience.categories.contains(category); });
        if (!campaign.categories.isEmpty() && matched.isEmpty())
            continue;
        const auto* const creative = creativeFor(campaign, audience.language, history);
        if (creative && (!chosen || since(campaign) < since(*chosen->campaign)))
            chosen = Offer {&campaign, creative, matched};
    }
    return chosen;
}

} // namespace orvella::sandbox
