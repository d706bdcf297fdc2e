#pragma once

#include "platform/macos/PropertyValue.h"

#include <cstdint>
#include <memory>

namespace orvella {

/// The viewer's defaults for this program.
class CocoaSettings {
public:
    virtual ~CocoaSettings() = default;

    [[nodiscard]] virtual PropertyValue value(const std::string& key) const = 0;
    virtual void setBoolean(const std::string& key, bool value) = 0;
    virtual void setInteger(const std::string& key, std::int64_t value) = 0;

    /// The standard defaults, or those of another name.
    [[nodiscard]] static std::unique_ptr<CocoaSettings> make(const std::optional<std::string>& suite);
};

} // namespace orvella
