#pragma once

#include "platform/Browser.h"

namespace orvella {

class CocoaWorkspace;

/// The browser that the viewer has chosen in the system's settings.
class MacBrowser final : public Browser {
public:
    explicit MacBrowser(CocoaWorkspace& workspace);

    /// Opens web addresses only; for anything else the answer is false.
    bool open(const QUrl& page) override;

private:
    CocoaWorkspace& m_workspace;
};

} // namespace orvella
