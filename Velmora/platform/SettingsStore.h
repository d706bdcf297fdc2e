#pragma once

#include <QString>

#include <optional>

namespace orvella {

/// The viewer's settings, kept between runs. A value of another type than the one asked for counts as missing.
class SettingsStore {
public:
    virtual ~SettingsStore() = default;

    [[nodiscard]] virtual std::optional<bool> boolean(const QString& key) const = 0;
    [[nodiscard]] virtual std::optional<QString> string(const QString& key) const = 0;

    /// Stores the value at once and for good.
    virtual void setBoolean(const QString& key, bool value) = 0;
};

} // namespace orvella
