#pragma once

#include "base/Clock.h"

#include <QString>

#include <map>
#include <optional>
#include <vector>

namespace orvella::fleet {

/// The requests that reach the service, counted for each second since the beginning.
class Arrivals final {
public:
    explicit Arrivals(Instant start);

    void note(Instant when, const QString& path);

    /// How many came of each call.
    [[nodiscard]] qint64 count(const QString& path) const;
    [[nodiscard]] qint64 total() const;

    /// For each second.
    [[nodiscard]] const std::vector<qint64>& inSecond() const { return m_inSecond; }
    /// The last second in which more than so many came.
    [[nodiscard]] std::optional<std::chrono::seconds> lastAbove(double limit) const;

    /// The greatest number in one second from `from` up to `to`, which is left out.
    [[nodiscard]] qint64 peak(std::chrono::seconds from, std::chrono::seconds to) const;
    /// The average number in one second of that time.
    [[nodiscard]] double mean(std::chrono::seconds from, std::chrono::seconds to) const;

private:
    Instant m_start;
    std::vector<qint64> m_inSecond;
    std::map<QString, qint64> m_ofPath;
};

} // namespace orvella::fleet
