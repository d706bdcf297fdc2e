#pragma once

#include <functional>

namespace orvella {

/// The one program that runs for a viewer's session and profile.
class Instance {
public:
    /// What the program is started for.
    enum class Request {
        /// Nothing but that it runs: the session started it, not the viewer.
        nothing,
        /// The viewer started it.
        reopen,
        /// The ad on offer.
        openAd,
        /// The settings.
        showSettings,
    };

    virtual ~Instance() = default;

    /// True where this is the first. Otherwise the running one is told what this one was started for, and this one has
    /// nothing left to do.
    [[nodiscard]] virtual bool claim(Request request) = 0;

    /// Calls `requested` each time the program is started again, and for each of its actions that the viewer chooses in
    /// a launcher.
    virtual void watch(std::function<void(Request)> requested) = 0;
};

} // namespace orvella
