#pragma once

#include "sandbox/Campaigns.h"

#include <QHash>
#include <QString>
#include <QStringList>

#include <optional>

namespace orvella::sandbox {

/// What a device says about its viewer when it asks for an ad.
struct Audience {
    QString language;
    /// Empty unless the viewer consents to category signals and is not anonymous.
    QStringList categories;
};

/// What a device has seen, as numbers that grow from view to view; 0 stands for never.
struct ViewingHistory {
    QHash<QString, qint64> lastCreditOfCampaign;
    QHash<QString, qint64> lastStartOfCampaign;
    QHash<QString, qint64> lastStartOfCreative;
};

/// An ad for a device. The campaigns outlive it.
struct Offer {
    const Campaign* campaign;
    const Creative* creative;
    QStringList matchedCategories;
};

/// The ad that is due: of the campaigns that suit the audience the one that was credited longest ago, among those never
/// credited the one that was started longest ago, then the order of the file. The creatives of a campaign take turns.
[[nodiscard]] std::optional<Offer> chooseOffer(
    const Campaigns& campaigns, const Audience& audience, const ViewingHistory& history);

} // namespace orvella::sandbox
