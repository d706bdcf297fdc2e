#pragma once

#include "platform/ForegroundFacts.h"

namespace orvella {

class CocoaForeground;

/// What the window server tells, which is all there is to know.
class MacForegroundFacts final : public ForegroundFacts {
public:
    explicit MacForegroundFacts(const CocoaForeground& foreground);

    [[nodiscard]] std::optional<bool> isScreenLocked() const override;

    /// The windows say it better.
    [[nodiscard]] std::optional<bool> isKeptAwakeForViewing() const override { return std::nullopt; }

    [[nodiscard]] std::optional<qint64> frontApplication() const override;
    [[nodiscard]] std::optional<std::vector<ScreenWindow>> windows() const override;
    [[nodiscard]] std::vector<QSizeF> screens() const override;

private:
    const CocoaForeground& m_foreground;
};

} // namespace orvella
