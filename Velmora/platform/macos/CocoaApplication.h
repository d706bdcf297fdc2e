#pragma once

#include <functional>
#include <memory>

namespace orvella {

/// The running application towards the system.
class CocoaApplication {
public:
    virtual ~CocoaApplication() = default;

    /// Whether there is an application object. All of the others need one, and would do nothing without a word.
    [[nodiscard]] virtual bool isThere() const = 0;
    /// No icon in the Dock and no menu bar of its own; windows and the keyboard all the same.
    virtual void becomeAccessory() = 0;
    /// Calls `reopened` when the running application is opened again, from now until this goes.
    virtual void watchReopening(std::function<void()> reopened) = 0;
    /// Brings it in front of the other applications.
    virtual void activate() = 0;

    [[nodiscard]] static std::unique_ptr<CocoaApplication> make();
};

} // namespace orvella
