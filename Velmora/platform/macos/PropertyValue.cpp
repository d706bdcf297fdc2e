#include "platform/macos/PropertyValue.h"

namespace orvella {

std::optional<bool> asBoolean(const PropertyValue& value)
{
    const auto* const number = std::get_if<double>(&value);
    if (number == nullptr || (*number != 0 && *number != 1))
        return std::nullopt;
    return *number == 1;
}

} // namespace orvella
