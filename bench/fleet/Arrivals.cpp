#include "fleet/Arrivals.h"

#include <algorithm>
#include <numeric>
#include <span>

namespace orvella::fleet {

namespace {

/// The seconds of that time that have been counted; nothing came in any later one.
std::span<const qint64> part(const std::vector<qint64>& inSecond, std::chrono::seconds from, std::chrono::seconds to)
{
    const auto counted = std::ssize(inSecond);
    const auto first = std::min(from.count(), counted);
    const auto end = std::clamp(to.count(), first, counted);
    return std::span(inSecond).subspan(static_cast<std::size_t>(first), static_cast<std::size_t>(end - first));
}

} // namespace

Arrivals::Arrivals(Instant start)
    : m_start(start)
{
}

void Arrivals::note(Instant when, const QString& path)
{
    const auto second = static_cast<std::size_t>(std::chrono::floor<std::chrono::seconds>(when - m_start).count());
    if (second >= m_inSecond.size())
        m_inSecond.resize(second + 1);
    ++m_inSecond[second];
    ++m_ofPath[path];
}

qint64 Arrivals::count(const QString& path) const
{
    const auto found = m_ofPath.find(path);
    return found == m_ofPath.end() ? 0 : found->second;
}

qint64 Arrivals::total() const
{
    return std::reduce(m_inSecond.begin(), m_inSecond.end());
}

std::optional<std::chrono::seconds> Arrivals::lastAbove(double limit) const
{
    const auto isAbove = [limit](qint64 count) { return static_cast<double>(count) > limit; };
    const auto last = std::ranges::find_if(m_inSecond.rbegin(), m_inSecond.rend(), isAbove);
    if (last == m_inSecond.rend())
        return std::nullopt;
    return std::chrono::seconds(std::distance(last, m_inSecond.rend()) - 1);
}

qint64 Arrivals::peak(std::chrono::seconds from, std::chrono::seconds to) const
{
    const auto seconds = part(m_inSecond, from, to);
    return seconds.empty() ? 0 : std::ranges::max(seconds);
}

double Arrivals::mean(std::chrono::seconds from, std::chrono::seconds to) const
{
    const auto seconds = part(m_inSecond, from, to);
    const auto sum = std::reduce(seconds.begin(), seconds.end());
    return static_cast<double>(sum) / static_cast<double>((to - from).count());
}

} // namespace orvella::fleet
