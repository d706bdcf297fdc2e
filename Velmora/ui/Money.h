#pragma once

#include <QString>

#include <optional>

namespace orvella {

class ViewerLocale;

/// How amounts of money reach the viewer as text.
class Money final {
public:
    Money() = delete;

    /// Whole cents, for example "12 cent": rounded down, but a value within a millionth of a cent below a whole number
    /// counts as that number. Anything negative and NaN is "0 cent". An amount that is not below 2^63 stops the
    /// program.
    [[nodiscard]] static QString formatApproximate(double cents);

    /// The exact figure in cents and in dollars, for example "Exact earnings: 12.5¢ ($0.125)". It reads the same in
    /// every locale.
    [[nodiscard]] static QString preciseDescription(double cents);

    /// A balance by the conventions of the viewer's locale, for example "$12.34".
    [[nodiscard]] static QString formatDollars(qint64 cents, const ViewerLocale& locale);

    /// The lifetime earnings in cents while the wallet has not caught up with the last ad yet: never less than that
    /// ad's whole cents. A last earning that is not below 2^63 stops the program.
    [[nodiscard]] static qint64 displayedLifetimeCents(qint64 lifetimeCents, std::optional<double> lastEarnedCents);
};

} // namespace orvella
