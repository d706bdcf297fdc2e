#pragma once

namespace orvella {

/// Has the program end with the exit code 0 when its X server goes, as happens at a logout. Qt ends it itself then,
/// with the code of a failure. Called once.
void endInOrderWithDisplay();

} // namespace orvella
