#pragma once

#include "base/Result.h"

namespace orvella {

/// Whether the program starts when the viewer logs in.
class LoginItem {
public:
    enum class Status { notRegistered, enabled, requiresApproval, notFound };

    virtual ~LoginItem() = default;

    virtual Result<void> registerItem() = 0;
    virtual Result<void> unregisterItem() = 0;
    [[nodiscard]] virtual Status status() const = 0;
};

} // namespace orvella
