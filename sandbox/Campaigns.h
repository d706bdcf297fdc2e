#pragma once

#include "base/Result.h"
#include "sandbox/Campaign.h"

#include <QByteArray>
#include <QString>

#include <optional>
#include <vector>

namespace orvella::sandbox {

/// The campaigns that run, in the order of their file.
class Campaigns final {
public:
    /// Reads a campaigns file. The failure names the place: "campaigns[2].creatives[0].language is missing".
    [[nodiscard]] static Result<Campaigns> parse(const QByteArray& json);

    /// The campaigns that are built in.
    [[nodiscard]] static Campaigns seeded();

    [[nodiscard]] const std::vector<Campaign>& all() const { return m_campaigns; }

    /// Null where there is none.
    [[nodiscard]] const Campaign* find(const QString& campaignId) const;

    /// Makes every campaign need the same time, for demonstrations.
    void requireSeconds(qint64 seconds);

private:
    explicit Campaigns(std::vector<Campaign> campaigns);

    std::vector<Campaign> m_campaigns;
};

} // namespace orvella::sandbox
