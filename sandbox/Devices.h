#pragma once

#include "base/Secret.h"
#include "sandbox/Database.h"
#include "sandbox/Device.h"

#include <optional>
#include <vector>

namespace orvella::sandbox {

/// The registered devices, their tokens and the accounts they are linked to.
class Devices final {
public:
    /// How long an activation code may be used. A device is given only one, so it is a full day.
    static constexpr auto kCodeLifetime = std::chrono::hours(24);

    explicit Devices(Database& database);

    struct Registration {
        Device device;
        Secret token;
    };

    /// What came of an activation code.
    struct Linking {
        enum class Outcome { linked, unknownCode, usedCode, expiredCode };

        Outcome outcome;
        /// The device that the code belongs to, unless the code is unknown.
        std::optional<Device> device;
    };

    /// Takes name, version, language and settings of `device`, and gives it an identifier, a code and a token.
    [[nodiscard]] Registration add(Device device, Moment now);

    [[nodiscard]] std::optional<Device> findByToken(const Secret& token);
    [[nodiscard]] std::optional<Device> find(const QString& deviceId);
    /// The devices of an account, the newest first.
    [[nodiscard]] std::vector<Device> ofViewer(const QString& viewer);

    /// Stores settings, language, categories and `seenAt`.
    void update(const Device& device);

    /// Links the device whose code it is to the account.
    [[nodiscard]] Linking link(const QString& typedCode, const QString& viewer, Moment now);

private:
    std::optional<Device> findWhere(const QString& condition, const QVariant& value);

    Database& m_database;
};

} // namespace orvella::sandbox
