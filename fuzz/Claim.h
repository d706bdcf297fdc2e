#pragma once

#include <cstdio>
#include <cstdlib>
#include <string>

namespace orvella {

/// Ends the run where something that always holds does not: the fuzzer keeps the input that led there. What was made of
/// the input may be shown with it.
inline void claim(bool holds, const char* what, const std::string& shown = {})
{
    if (holds)
        return;
    std::fprintf(stderr, "This does not hold: %s\n%s\n", what, shown.c_str());
    std::abort();
}

} // namespace orvella
