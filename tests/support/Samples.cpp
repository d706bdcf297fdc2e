#include "support/Samples.h"

namespace orvella {

using namespace Qt::Literals::StringLiterals;

DeviceRegistration aRegistration()
{
    return {u"device-1"_s, Secret("token-1"), u"KX4M-9TQ2"_s, u"https://service.test/activate?code=KX4M-9TQ2"_s, 120};
}

WalletResponse aWallet()
{
    return {true, {.pendingCents = 175, .availableCents = 637, .paidCents = 4000, .lifetimeCents = 4812}};
}

AvailableAd anAd()
{
    return {
        .campaignId = u"campaign-1"_s,
        .creativeId = u"creative-1"_s,
        .advertiserName = u"Brightleaf Hosting"_s,
        .body = u"Ship your side project in 30 seconds"_s,
        .ctaLabel = u"Try it"_s,
        .targetUrl = u"https://brightleaf.test/offer"_s,
        .language = u"en"_s,
        .requiredSeconds = 15,
        .matchedCategories = {u"developer_tools"_s, u"design_tools"_s},
        .advertiserChargeCents = 20,
        .viewerEarnCents = 12,
        .platformFeeCents = 7,
        .viewerEarnCentsExact = 12.5,
        .platformFeeCentsExact = 7.5,
    };
}

AvailabilityResponse anOffer()
{
    return {.available = true, .pollSeconds = {}, .ad = anAd()};
}

AvailabilityResponse noOffer()
{
    return {};
}

AdSession aSession()
{
    return {u"session-1"_s, 15, u"2030-01-01T00:00:15Z"_s, u"https://brightleaf.test/offer"_s, 12};
}

CompletionResponse aCompletion()
{
    return {
        .completed = true,
        .reason = u"credited"_s,
        .viewerEarnCents = 12,
        .platformFeeCents = 7,
        .advertiserChargeCents = 20,
        .viewerEarnCentsExact = 12.5,
        .platformFeeCentsExact = 7.5,
    };
}

ClickResponse aClick()
{
    return {u"https://brightleaf.test/landing?click=1"_s};
}

} // namespace orvella
