#pragma once

#include <QString>

namespace orvella::sandbox {

/// Whether the key is one of the broad categories that the service knows.
[[nodiscard]] bool isCategory(const QString& key);

/// The category as a viewer reads it: "Developer tools".
[[nodiscard]] QString categoryLabel(const QString& key);

} // namespace orvella::sandbox
