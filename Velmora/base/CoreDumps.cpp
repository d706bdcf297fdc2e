#include "base/CoreDumps.h"

#include <algorithm>
#include <sys/resource.h>

namespace orvella {

void leaveNoCoreDumps()
{
    // Not zero: where dumps are handed to a program (a pipe in core_pattern), Linux hands it those that are limited to
    // zero bytes too. It knows one byte as "none at all", and a file would be too small for a dump.
    constexpr rlim_t kNone = 1;
    rlimit limit {};
    // The hard limit stays, for the debugger's sake.
    if (getrlimit(RLIMIT_CORE, &limit) != 0)
        return;
    limit.rlim_cur = std::min(kNone, limit.rlim_max);
    setrlimit(RLIMIT_CORE, &limit);
}

} // namespace orvella
