#pragma once

#include "platform/SettingsStore.h"

namespace orvella {

class CocoaSettings;

/// The viewer's defaults. A number that is exactly 1 or 0 is a Boolean there, too.
class MacSettingsStore final : public SettingsStore {
public:
    explicit MacSettingsStore(CocoaSettings& settings);

    [[nodiscard]] std::optional<bool> boolean(const QString& key) const override;
    [[nodiscard]] std::optional<QString> string(const QString& key) const override;
    [[nodiscard]] bool contains(const QString& key) const override;
    void setBoolean(const QString& key, bool value) override;
    void setInteger(const QString& key, qint64 value) override;

private:
    CocoaSettings& m_settings;
};

} // namespace orvella
