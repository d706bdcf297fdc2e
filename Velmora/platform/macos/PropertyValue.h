#pragma once

#include <optional>
#include <string>
#include <variant>

namespace orvella {

/// There is a value, of a type that the program does not read.
struct OtherValue {};

/// A value of a property list. Numbers and Booleans are one type there.
using PropertyValue = std::variant<std::monostate, double, std::string, OtherValue>;

/// The Boolean that the value can be read as: true, false, or a number that is exactly 1 or 0.
[[nodiscard]] std::optional<bool> asBoolean(const PropertyValue& value);

} // namespace orvella
