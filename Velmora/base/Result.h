#pragma once

#include "base/Failure.h"

#include <expected>

namespace orvella {

/// A value, or why there is none.
template <class T> using Result = std::expected<T, Failure>;

/// Shortens `return std::unexpected(Failure {kind, description})`.
[[nodiscard]] inline std::unexpected<Failure> failed(Failure::Kind kind, QString description = {})
{
    return std::unexpected(Failure {kind, std::move(description)});
}

} // namespace orvella
