#pragma once

namespace orvella::simulation {

/// Does what the main loop has been given to do, and what that gives it, until nothing is left.
void doPostedWork();

} // namespace orvella::simulation
