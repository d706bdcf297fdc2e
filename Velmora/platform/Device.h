#pragma once

#include <QString>

#include <optional>

namespace orvella {

/// What the service is told about this computer and this program.
class Device {
public:
    virtual ~Device() = default;

    /// The computer's name as its user knows it; nothing where the system gives none.
    [[nodiscard]] virtual std::optional<QString> name() const = 0;

    /// The program's short version, for example "0.1.0"; nothing where the system does not know it.
    [[nodiscard]] virtual std::optional<QString> applicationVersion() const = 0;
};

} // namespace orvella
