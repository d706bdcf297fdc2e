#pragma once

#include "platform/Browser.h"

namespace orvella {

/// The browser that the desktop has for web pages: the portal's in a sandbox, else the one that xdg-open starts.
class XdgBrowser final : public Browser {
public:
    /// Opens web addresses only; for anything else the answer is false. True says that the request went out: what
    /// becomes of it nobody reports.
    bool open(const QUrl& page) override;
};

} // namespace orvella
