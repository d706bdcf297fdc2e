#pragma once

namespace orvella {

/// The program as it is started.
class VelmoraApp final {
public:
    VelmoraApp() = delete;

    /// Runs until the viewer or the session ends it; answers the exit status: 0, 1 where no display lets it in, or 2
    /// for a wrong command line.
    static int run(int argc, char** argv);
};

} // namespace orvella
