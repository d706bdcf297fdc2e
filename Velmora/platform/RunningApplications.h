#pragma once

#include <QString>

#include <optional>
#include <vector>

namespace orvella {

/// One application that is running now.
struct RunningApplication {
    /// Has windows of its own: not a panel, a tray program or a background helper.
    bool isRegular = true;
    /// The desktop's identifier of the application, for example "org.mozilla.firefox".
    std::optional<QString> identifier;
    /// The name the viewer knows, in the viewer's language.
    std::optional<QString> name;
};

/// The applications of the viewer's session.
class RunningApplications {
public:
    virtual ~RunningApplications() = default;

    /// Asks the system afresh, in the system's order.
    [[nodiscard]] virtual std::vector<RunningApplication> list() const = 0;
};

} // namespace orvella
