#pragma once

#include <QString>

namespace orvella {

class AppState;

/// What the settings of category signals tell the viewer, the same wherever they stand.
class CategoryConsent final {
public:
    CategoryConsent() = delete;

    /// Whether the viewer may allow them now.
    [[nodiscard]] static bool isOpen(const AppState& state);

    /// What allowing them means, or what has to come first.
    [[nodiscard]] static QString help(const AppState& state);

    /// What has to come first, in short; empty while nothing has to.
    [[nodiscard]] static QString hint(const AppState& state);
};

} // namespace orvella
