#pragma once

#include <cerrno>

namespace orvella {

/// Makes a system call again for as long as a signal comes between: a file system over the network, or one of a
/// program, lets that happen to every call.
template <class Call> [[nodiscard]] auto uninterrupted(Call call)
{
    auto answer = call();
    while (answer < 0 && errno == EINTR)
        answer = call();
    return answer;
}

} // namespace orvella
