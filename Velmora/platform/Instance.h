#pragma once

#include <QCoroTask>
#include <QString>

#include <functional>
#include <optional>

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

    /// Makes the report of a fault for whom the viewer starts to get one.
    virtual void offerReport(std::function<QCoro::Task<QString>()> report) = 0;
    struct Running {
        bool isThere = false;
        /// Nothing where it does not answer within 15 seconds, or has none to give.
        std::optional<QString> report;
    };

    /// The program that runs, while this one does not.
    [[nodiscard]] virtual Running running() const = 0;
};

} // namespace orvella
