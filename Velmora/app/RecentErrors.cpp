#include "app/RecentErrors.h"

namespace orvella {

RecentErrors::RecentErrors(AppState& state, const Clock& clock)
    : m_clock(clock)
{
    state.lastError.subscribe(this, [this](const std::optional<QString>& error) {
        if (error)
            note(*error);
    });
}

void RecentErrors::note(const QString& description)
{
    if (!m_entries.empty() && m_entries.back().description == description) {
        m_entries.back().at = m_clock.now();
        ++m_entries.back().times;
        return;
    }
    m_entries.push_back({description, m_clock.now()});
    if (m_entries.size() > kMost)
        m_entries.pop_front();
}

} // namespace orvella
