#pragma once

#include "sandbox/Device.h"
#include "sandbox/Ledger.h"
#include "sandbox/Reply.h"

#include <QString>

#include <vector>

namespace orvella::sandbox {

/// The viewer's dashboard.
struct ViewerPage {
    QString viewer;
    Balances balances;
    std::vector<Device> devices;
    std::vector<View> views;
    /// The name of the device that was linked a moment ago.
    QString justLinked;

    [[nodiscard]] Reply reply() const;
};

} // namespace orvella::sandbox
