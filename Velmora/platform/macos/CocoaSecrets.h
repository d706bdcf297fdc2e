#pragma once

#include <memory>
#include <optional>
#include <string>

namespace orvella {

/// Generic passwords of the viewer's keychain. Every call may wait for the viewer, whom the keychain asks whether it
/// may be used; so none is for the main thread.
class CocoaSecrets {
public:
    /// What the Security framework answered, 0 being a success.
    using Status = int;

    struct Answer {
        Status status = 0;
        /// There on success where the item has bytes.
        std::optional<std::string> bytes;
    };

    virtual ~CocoaSecrets() = default;

    [[nodiscard]] virtual Answer read(const std::string& service, const std::string& account) = 0;
    /// Whether there is such an item; its bytes are not asked for.
    [[nodiscard]] virtual Status look(const std::string& service, const std::string& account) = 0;
    virtual Status add(const std::string& service, const std::string& account, const std::string& bytes) = 0;
    virtual Status remove(const std::string& service, const std::string& account) = 0;

    [[nodiscard]] static std::unique_ptr<CocoaSecrets> make();
};

} // namespace orvella
