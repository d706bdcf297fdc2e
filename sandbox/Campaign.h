#pragma once

#include "sandbox/Amount.h"

#include <QString>
#include <QStringList>

#include <optional>
#include <vector>

namespace orvella::sandbox {

/// One text of a campaign in one language; what a viewer is shown and what the client lets rest afterwards.
struct Creative {
    QString id;
    QString language;
    QString body;
    QString ctaLabel;
};

/// What an advertiser pays to have shown.
struct Campaign {
    /// How many seconds a view may have to last.
    static constexpr qint64 kLongestRequirement = 3600;

    QString id;
    QString advertiserName;
    /// What a viewer must do at least one of; empty where the campaign is for everyone.
    QStringList categories;
    qint64 requiredSeconds = 0;
    /// A whole number of cents, because the wire has no other field for it.
    Amount advertiserCharge;
    Amount viewerEarn;
    /// Shown to viewers in whose language there is nothing; without it they are not offered the campaign.
    std::optional<QString> fallbackLanguage;
    // The advertiser’s page that a click leads to, in the language of the first creative.
    QString headline;
    QString text;
    std::vector<Creative> creatives;

    /// The rest of the charge: the two parts always make the whole.
    [[nodiscard]] Amount platformFee() const { return advertiserCharge - viewerEarn; }
};

} // namespace orvella::sandbox
