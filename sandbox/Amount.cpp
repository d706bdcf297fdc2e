#include "sandbox/Amount.h"

#include <cmath>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

// Up to here every count of millionths is itself exact as a double.
constexpr double kGreatestExactCount = 9007199254740992.0;

} // namespace

std::optional<Amount> Amount::ofExactCents(double cents)
{
    constexpr auto kScale = static_cast<double>(kMicroCentsPerCent);
    const auto count = std::round(cents * kScale);
    if (std::isnan(count) || count < 0 || count > kGreatestExactCount)
        return std::nullopt;
    // Division rounds correctly: only the double that stands for this very fraction comes back.
    if (count / kScale != cents)
        return std::nullopt;
    return Amount(static_cast<qint64>(count));
}

double Amount::exactCents() const
{
    return static_cast<double>(m_microCents) / static_cast<double>(kMicroCentsPerCent);
}

QString Amount::dollars() const
{
    constexpr auto kPerDollar = kMicroCentsPerCent * 100;
    constexpr auto kDecimals = 8;
    const auto magnitude =
        m_microCents < 0 ? 0 - static_cast<quint64>(m_microCents) : static_cast<quint64>(m_microCents);
    auto decimals = QString::number(magnitude % kPerDollar).rightJustified(kDecimals, u'0');
    while (decimals.size() > 2 && decimals.endsWith(u'0'))
        decimals.chop(1);
    const auto sign = m_microCents < 0 ? u"-"_s : QString();
    return sign + u'$' + QString::number(magnitude / kPerDollar) + u'.' + decimals;
}

} // namespace orvella::sandbox
