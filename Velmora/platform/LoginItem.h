#pragma once

#include "base/Result.h"

#include <functional>

namespace orvella {

/// Whether the program starts when the viewer logs in.
class LoginItem {
public:
    enum class Status { notRegistered, enabled, requiresApproval, notFound };

    virtual ~LoginItem() = default;

    /// A success where the system has done it, or has been asked to.
    virtual Result<void> registerItem() = 0;
    virtual Result<void> unregisterItem() = 0;
    [[nodiscard]] virtual Status status() const = 0;

    /// Where the system answers only after the call: `answered` is called with what became of the last one. The status
    /// is the new one by then.
    virtual void watch(std::function<void(const Result<void>&)> answered) = 0;
};

} // namespace orvella
