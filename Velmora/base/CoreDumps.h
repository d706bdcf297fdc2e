#pragma once

namespace orvella {

/// From now on a crash of this process leaves no dump of its memory, which has the device's token in it. A program that
/// it starts inherits that and may choose otherwise; so may a developer, with prlimit.
void leaveNoCoreDumps();

} // namespace orvella
