#include "core/CreativeSuppression.h"

namespace orvella {

using namespace std::chrono_literals;

namespace {

constexpr auto kRest = 300s;

} // namespace

CreativeSuppression::CreativeSuppression(const Clock& clock)
    : m_clock(clock)
{
}

void CreativeSuppression::suppress(const QString& creativeId)
{
    prune();
    const auto now = m_clock.now();
    m_since.insert(creativeId, now);
    m_rests.enqueue({creativeId, now});
}

bool CreativeSuppression::isSuppressed(const QString& creativeId)
{
    prune();
    return m_since.contains(creativeId);
}

void CreativeSuppression::prune()
{
    const auto oldest = m_clock.now() - kRest;
    while (!m_rests.isEmpty() && m_rests.head().since <= oldest) {
        const auto rest = m_rests.dequeue();
        if (m_since.value(rest.creativeId) == rest.since)
            m_since.remove(rest.creativeId);
    }
}

} // namespace orvella
