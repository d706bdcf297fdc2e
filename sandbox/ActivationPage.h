#pragma once

#include "sandbox/Reply.h"

#include <QString>

namespace orvella::sandbox {

/// The form in which a viewer enters the code of a device.
struct ActivationPage {
    QString code;
    /// Why the code did not link anything; empty at first.
    QString problem;

    [[nodiscard]] Reply reply(int status) const;
};

} // namespace orvella::sandbox
