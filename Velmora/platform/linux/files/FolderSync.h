#pragma once

#include <QString>

namespace orvella {

/// Sees to it that the names in the folder are on the disk. False, with `errno`, where that is not known.
[[nodiscard]] bool syncFolder(const QString& folder);

} // namespace orvella
