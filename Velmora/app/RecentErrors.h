#pragma once

#include "core/AppState.h"

#include <deque>

namespace orvella {

/// The last failures of this run, for the report of a fault: those that the state told of, and those of ads.
class RecentErrors final : public QObject {
    Q_OBJECT

public:
    struct Entry {
        QString description;
        /// When it was told last.
        Instant at;
        /// How often it was told in a row.
        int times = 1;
    };

    static constexpr std::size_t kMost = 5;

    RecentErrors(AppState& state, const Clock& clock);

    /// The oldest first.
    [[nodiscard]] const std::deque<Entry>& entries() const { return m_entries; }

    void note(const QString& description);

private:
    const Clock& m_clock;
    std::deque<Entry> m_entries;
};

} // namespace orvella
