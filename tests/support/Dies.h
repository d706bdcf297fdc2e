#pragma once

#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace orvella {

/// Whether a function stops the program, as qFatal does. It runs in a copy of the process.
template <class Function> [[nodiscard]] bool dies(Function function)
{
    const auto child = fork();
    if (child == 0) {
        // QtTest would have a debugger look at it.
        std::signal(SIGABRT, SIG_DFL);
        function();
        _exit(0);
    }
    int status = 0;
    return waitpid(child, &status, 0) == child && WIFSIGNALED(status) && WTERMSIG(status) == SIGABRT;
}

} // namespace orvella
