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

    /// Whether there is a value of whatever type.
    [[nodiscard]] virtual bool contains(const QString& key) const = 0;

    // Both store the value at once and for good.
    virtual void setBoolean(const QString& key, bool value) = 0;
    virtual void setInteger(const QString& key, qint64 value) = 0;
};

} // namespace orvella
