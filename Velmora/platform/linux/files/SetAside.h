#pragma once

#include <QString>

namespace orvella {

/// Moves what the program cannot use, and must not lose, to a new name beside it: "<path>.unreadable-1" and so on. A
/// file is the user's alone (0600) from then on. A link is moved, not followed. The folder is synced, so that nothing
/// that takes the old name is on the disk before.
[[nodiscard]] bool setAside(const QString& path);

} // namespace orvella
