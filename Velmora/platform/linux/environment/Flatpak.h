#pragma once

class QProcessEnvironment;

namespace orvella {

/// Whether the program runs in a Flatpak: flatpak-run(1) sets the variable.
[[nodiscard]] bool isInFlatpak(const QProcessEnvironment& environment);

} // namespace orvella
