#pragma once

#include <QString>
#include <QtGlobal>

#include <compare>
#include <optional>

namespace orvella::sandbox {

/// An exact amount of money, counted in millionths of a US cent.
///
/// A price per thousand views leaves thousandths of a cent, a share of it in whole per cent two digits more; the sixth
/// digit is to spare. A signed 64-bit count then reaches 92 billion dollars, and every amount below 90 million dollars
/// is one double when it is told in cents, so that nothing is lost on the wire either.
class Amount final {
public:
    static constexpr qint64 kMicroCentsPerCent = 1'000'000;

    constexpr Amount() = default;

    [[nodiscard]] static constexpr Amount ofMicroCents(qint64 count) { return Amount(count); }

    [[nodiscard]] static constexpr Amount ofCents(qint64 count) { return Amount(count * kMicroCentsPerCent); }

    /// Nothing where the number of cents is negative, too large or has more than six decimals.
    [[nodiscard]] static std::optional<Amount> ofExactCents(double cents);

    [[nodiscard]] constexpr qint64 microCents() const { return m_microCents; }

    /// Rounded down: what is not a whole cent yet cannot be paid out.
    [[nodiscard]] constexpr qint64 wholeCents() const { return m_microCents / kMicroCentsPerCent; }

    /// The double nearest to the exact number of cents.
    [[nodiscard]] double exactCents() const;

    /// Every digit that counts, at least two decimals: "$0.05", "$12.0175".
    [[nodiscard]] QString dollars() const;

    friend constexpr Amount operator+(Amount left, Amount right)
    {
        return Amount(left.m_microCents + right.m_microCents);
    }

    friend constexpr Amount operator-(Amount left, Amount right)
    {
        return Amount(left.m_microCents - right.m_microCents);
    }

    friend constexpr auto operator<=>(Amount, Amount) = default;

private:
    explicit constexpr Amount(qint64 microCents)
        : m_microCents(microCents)
    {
    }

    qint64 m_microCents = 0;
};

} // namespace orvella::sandbox
