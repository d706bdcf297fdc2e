#pragma once

#include <QString>

class QAbstractButton;

namespace orvella {

class AppState;

/// What the settings of category signals tell the viewer, the same wherever they stand.
class CategoryConsent final {
public:
    CategoryConsent() = delete;

    /// Has their switch show what the state is: whether they are allowed, whether the viewer may allow them now, and
    /// what that means or what has to come first.
    static void refresh(QAbstractButton& control, const AppState& state);

    /// What has to come first, in short; empty while nothing has to.
    [[nodiscard]] static QString hint(const AppState& state);
};

} // namespace orvella
