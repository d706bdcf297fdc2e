#pragma once

#include <QProcessEnvironment>
#include <QString>

namespace orvella {

/// Where the program will lie at the next login, too. An AppImage runs from a folder that is there for this run only,
/// so the path is the AppImage's own then; otherwise it is that of the executable.
///
/// The variables of an AppImage are handed down to whatever it starts: they count only where the executable lies in its
/// folder.
[[nodiscard]] QString lastingPath(const QProcessEnvironment& environment, const QString& executable);

} // namespace orvella
