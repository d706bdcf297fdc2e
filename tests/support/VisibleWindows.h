#pragma once

#include <QString>

namespace orvella {

/// How many windows of this process a display shows: the test's own, or the one with this name.
[[nodiscard]] int visibleWindowsOf(qint64 process, const QString& display = {});

} // namespace orvella
