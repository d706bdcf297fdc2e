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
    m_since.insert(creativeId, m_clock.now());
}

bool CreativeSuppression::isSuppressed(const QString& creativeId)
{
    prune();
    return m_since.contains(creativeId);
}

void CreativeSuppression::prune()
{
    const auto oldest = m_clock.now() - kRest;
    m_since.removeIf([oldest](const auto& entry) { return entry.value() <= oldest; });
}

} // namespace orvella
