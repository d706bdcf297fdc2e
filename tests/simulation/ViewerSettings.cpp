#include "simulation/ViewerSettings.h"

#include "core/AppState.h"

namespace orvella::simulation {

using namespace Qt::Literals::StringLiterals;

namespace {

bool value(const Json::Object& object, const QString& key, bool fallback)
{
    const auto found = object.find(key);
    const auto* const stored = found == object.end() ? nullptr : found->second.boolean();
    return stored ? *stored : fallback;
}

std::optional<QString> firstDifference(const ViewerSettings& wanted, const ViewerSettings& found)
{
    if (wanted.anonymousMode != found.anonymousMode)
        return u"anonymousMode"_s;
    if (wanted.appSignalConsent != found.appSignalConsent)
        return u"appSignalConsent"_s;
    if (wanted.ageConfirmed != found.ageConfirmed)
        return u"ageConfirmed"_s;
    if (wanted.autoOpenAds != found.autoOpenAds)
        return u"autoOpenAds"_s;
    if (wanted.showLaunchWindowAtStartup != found.showLaunchWindowAtStartup)
        return u"showLaunchWindowAtStartup"_s;
    return std::nullopt;
}

} // namespace

ViewerSettings ViewerSettings::read(const QByteArray& file)
{
    const auto json = Json::parse(file);
    const auto object = json && json->object() ? *json->object() : Json::Object();
    ViewerSettings settings;
    settings.anonymousMode = value(object, u"anonymousMode"_s, true);
    settings.appSignalConsent = value(object, u"appSignalConsent"_s, false);
    settings.ageConfirmed = value(object, u"ageConfirmed"_s, false);
    settings.autoOpenAds = value(object, u"autoOpenAds"_s, false);
    settings.showLaunchWindowAtStartup = value(object, u"showLaunchWindowAtStartup"_s, true);
    settings.isFoundConsentAllowed = true;
    return settings;
}

void ViewerSettings::assign(Name name, bool value)
{
    switch (name) {
    case Name::anonymousMode:
        anonymousMode = value;
        isFoundConsentAllowed = false;
        appSignalConsent = appSignalConsent && !anonymousMode && ageConfirmed;
        break;
    case Name::appSignalConsent:
        appSignalConsent = value && ageConfirmed;
        isFoundConsentAllowed = false;
        break;
    case Name::ageConfirmed:
        ageConfirmed = value;
        isFoundConsentAllowed = false;
        appSignalConsent = appSignalConsent && ageConfirmed;
        break;
    case Name::autoOpenAds:
        autoOpenAds = value;
        break;
    case Name::showLaunchWindowAtStartup:
        showLaunchWindowAtStartup = value;
        break;
    }
}

std::optional<QString> ViewerSettings::differenceTo(const AppState& state) const
{
    return firstDifference(*this,
        {state.anonymousMode(), state.appSignalConsent(), state.ageConfirmed(), state.autoOpenAds(),
            state.showLaunchWindowAtStartup(), isFoundConsentAllowed});
}

std::optional<QString> ViewerSettings::differenceTo(const QByteArray& file) const
{
    return firstDifference(*this, read(file));
}

} // namespace orvella::simulation
