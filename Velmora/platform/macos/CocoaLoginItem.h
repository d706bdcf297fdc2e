#pragma once

#include <memory>
#include <optional>
#include <string>

namespace orvella {

/// The application among the viewer's login items.
class CocoaLoginItem {
public:
    enum class Status { notRegistered, enabled, requiresApproval, notFound };

    virtual ~CocoaLoginItem() = default;

    // Both answer with the system's own description where it failed.
    virtual std::optional<std::string> registerItem() = 0;
    virtual std::optional<std::string> unregisterItem() = 0;
    [[nodiscard]] virtual Status status() const = 0;

    [[nodiscard]] static std::unique_ptr<CocoaLoginItem> make();
};

} // namespace orvella
