#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace orvella {

/// What the viewer's session is like: the applications, the computer, the locale and the wishes for how things look.
class CocoaWorkspace {
public:
    struct Application {
        /// The number of its activation policy, 0 being the regular one.
        std::int64_t activationPolicy = 0;
        std::optional<std::string> bundleIdentifier;
        std::optional<std::string> localizedName;
        std::int64_t process = 0;
    };
    struct Look {
        bool isDark = false;
        bool isContrastIncreased = false;
        bool isMotionReduced = false;

        friend bool operator==(const Look&, const Look&) = default;
    };

    virtual ~CocoaWorkspace() = default;

    [[nodiscard]] virtual std::vector<Application> runningApplications() const = 0;
    /// Opens the address in the default browser; false where the workspace says so, or it is no address.
    virtual bool open(const std::string& address) = 0;

    [[nodiscard]] virtual std::optional<std::string> computerName() const = 0;
    /// The application's short version, as its bundle has it.
    [[nodiscard]] virtual std::optional<std::string> applicationVersion() const = 0;

    // Of the locale that the viewer has now.
    [[nodiscard]] virtual std::optional<std::string> languageCode() const = 0;
    [[nodiscard]] virtual std::optional<std::string> currencyText(double dollars) const = 0;

    [[nodiscard]] virtual Look look() const = 0;
    /// Calls `changed` when the contrast or the motion that the viewer wants may be others, from now until this goes.
    /// Once.
    virtual void watchDisplayOptions(std::function<void()> changed) = 0;

    [[nodiscard]] static std::unique_ptr<CocoaWorkspace> make();
};

} // namespace orvella
