#include "ui/Money.h"

#include "platform/ViewerLocale.h"

#include <unicode/currunit.h>
#include <unicode/numberformatter.h>

#include <QLocale>

#include <algorithm>
#include <array>
#include <charconv>
#include <cmath>

namespace orvella {

using icu::number::LocalizedNumberFormatter;
using icu::number::NumberFormatter;
using icu::number::Precision;

namespace {

qint64 wholeCents(double cents)
{
    // Deliberate: binary fractions often are a hair below the whole number that is meant.
    constexpr double kTolerance = 0.000001;
    constexpr double kFirstTooLarge = 0x1p63;
    const auto whole = std::floor((cents >= 0 ? cents : 0) + kTolerance);
    // Deliberate: a wrong amount of money is worse than none.
    if (whole >= kFirstTooLarge)
        qFatal("An amount of money is not below 2^63 cents.");
    return static_cast<qint64>(whole);
}

/// The shortest decimal text that reads back as the same double, as ICU reads it.
class ShortestText final {
public:
    explicit ShortestText(double value)
    {
        // The other formats write all digits of a large number, not only those that tell it from its neighbours.
        const auto written =
            std::to_chars(m_text.data(), m_text.data() + m_text.size(), value, std::chars_format::scientific);
        m_length = static_cast<int32_t>(written.ptr - m_text.data());
    }

    [[nodiscard]] icu::StringPiece piece() const { return {m_text.data(), m_length}; }

private:
    // "-1.7976931348623157e+308" is the longest.
    std::array<char, 32> m_text {};
    int32_t m_length = 0;
};

/// The number as the formatter writes it, rounded half to even on the decimal value that the double shows; empty where
/// ICU fails.
QString formatted(const LocalizedNumberFormatter& formatter, double value)
{
    UErrorCode error = U_ZERO_ERROR;
    const ShortestText shortest(value);
    const auto number =
        std::isfinite(value) ? formatter.formatDecimal(shortest.piece(), error) : formatter.formatDouble(value, error);
    const auto text = number.toString(error);
    return U_SUCCESS(error) ? QString::fromUtf16(text.getBuffer(), text.length()) : QString();
}

LocalizedNumberFormatter posixFormatter()
{
    return NumberFormatter::withLocale("en_US_POSIX").roundingMode(UNUM_ROUND_HALFEVEN);
}

QString centsText(double cents)
{
    const auto text = formatted(posixFormatter().precision(Precision::maxFraction(4)), cents);
    return text.isEmpty() ? QString::number(cents, 'g', QLocale::FloatingPointShortest) : text;
}

QString dollarsText(double dollars)
{
    UErrorCode error = U_ZERO_ERROR;
    const icu::CurrencyUnit unit(u"USD", error);
    auto text = formatted(posixFormatter().unit(unit).precision(Precision::minMaxFraction(2, 6)), dollars);
    // ICU's POSIX pattern has a no-break space after the sign, which nobody else's has.
    text.remove(QChar::Nbsp);
    return U_FAILURE(error) || text.isEmpty() ? QStringLiteral("$0.00") : text;
}

} // namespace

QString Money::formatApproximate(double cents)
{
    // Deliberate: the unit has no plural, and reads the same in every language.
    return QStringLiteral("%1 cent").arg(wholeCents(cents));
}

QString Money::preciseDescription(double cents)
{
    constexpr double kCentsPerDollar = 100.0;
    // Deliberate: this too, in which the number is written the same way everywhere.
    return QStringLiteral("Exact earnings: %1¢ (%2)").arg(centsText(cents), dollarsText(cents / kCentsPerDollar));
}

QString Money::formatDollars(qint64 cents, const ViewerLocale& locale)
{
    return locale.usDollars(cents);
}

qint64 Money::displayedLifetimeCents(qint64 lifetimeCents, std::optional<double> lastEarnedCents)
{
    return std::max(lifetimeCents, lastEarnedCents ? wholeCents(*lastEarnedCents) : 0);
}

} // namespace orvella
