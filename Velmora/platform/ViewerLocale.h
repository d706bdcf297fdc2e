#pragma once

#include <QString>

#include <optional>

namespace orvella {

/// The language and the money texts of the viewer, following the system's setting as it changes.
class ViewerLocale {
public:
    virtual ~ViewerLocale() = default;

    /// The ISO 639 code of the viewer's language, for example "de"; nothing where the locale has none.
    [[nodiscard]] virtual std::optional<QString> languageCode() const = 0;

    /// Whole US-dollar cents as a currency amount, for example "$12.34" or "12,34 $".
    [[nodiscard]] virtual QString usDollars(qint64 cents) const = 0;
};

} // namespace orvella
