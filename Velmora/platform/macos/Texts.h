#pragma once

#include <QString>

#include <optional>
#include <string>

namespace orvella {

// Texts cross the seam in UTF-8.

[[nodiscard]] inline std::optional<QString> shared(const std::optional<std::string>& text)
{
    return text ? std::optional(QString::fromStdString(*text)) : std::nullopt;
}

} // namespace orvella
