#pragma once

#include "platform/SystemReport.h"

namespace orvella {

class CocoaUpdater;

/// The version of macOS, and whether the update framework is in the bundle.
class MacSystemReport final : public SystemReport {
public:
    explicit MacSystemReport(const CocoaUpdater& updater);

    [[nodiscard]] std::vector<Fact> facts() const override;

private:
    const CocoaUpdater& m_updater;
};

} // namespace orvella
