#include "platform/DisplayChoice.h"

namespace orvella {

// A Mac has one window server, and whoever is logged in may use it. Where nobody is, the system itself ends the
// program.
DisplayChoice::DisplayChoice() = default;

DisplayChoice::~DisplayChoice() = default;

bool DisplayChoice::isEmpty() const
{
    return false;
}

bool DisplayChoice::isRefused() const
{
    return false;
}

} // namespace orvella
