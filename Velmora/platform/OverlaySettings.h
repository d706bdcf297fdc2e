#pragma once

#include "base/Json.h"
#include "base/Result.h"
#include "platform/SettingsStore.h"

#include <QString>

#include <map>
#include <vector>

namespace orvella {

/// Values that lie over a store for this run only. Reading sees them first, of whatever type they are; writing a key
/// takes its value away and goes to the store below.
class OverlaySettings final : public SettingsStore {
public:
    struct Entry {
        QString key;
        Json value;

        /// Reads "KEY=VALUE", where VALUE is JSON or else the string as it stands. Without a key or a "=" it is
        /// `refused`.
        [[nodiscard]] static Result<Entry> parse(const QString& text);
    };

    /// Of equal keys the last one counts.
    OverlaySettings(SettingsStore& below, const std::vector<Entry>& entries);

    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override;
    [[nodiscard]] std::optional<QString> string(const QString& key) const override;
    [[nodiscard]] bool contains(const QString& key) const override;
    void setBoolean(const QString& key, bool value) override;
    void setInteger(const QString& key, qint64 value) override;

private:
    SettingsStore& m_below;
    std::map<QString, Json> m_values;
};

} // namespace orvella
