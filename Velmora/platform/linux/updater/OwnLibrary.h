#pragma once

#include <QString>

namespace orvella {

/// The absolute path that a library of the program's own has, be it there or not; empty where the system does not tell.
///
/// It depends on where the executable lies, as the kernel knows it. How the program was called, its environment and its
/// working directory have no say.
[[nodiscard]] QString ownLibrary(const QString& fileName);

} // namespace orvella
