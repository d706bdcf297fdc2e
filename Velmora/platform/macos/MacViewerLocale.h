#pragma once

#include "platform/ViewerLocale.h"

namespace orvella {

class CocoaWorkspace;

/// The locale of the system's settings, asked anew each time: it may change while the program runs.
class MacViewerLocale final : public ViewerLocale {
public:
    explicit MacViewerLocale(const CocoaWorkspace& workspace);

    [[nodiscard]] std::optional<QString> languageCode() const override;
    [[nodiscard]] QString usDollars(qint64 cents) const override;

private:
    const CocoaWorkspace& m_workspace;
};

} // namespace orvella
