#include "platform/macos/MacSettingsStore.h"

#include "platform/macos/CocoaSettings.h"

namespace orvella {

MacSettingsStore::MacSettingsStore(CocoaSettings& settings)
    : m_settings(settings)
{
}

std::optional<bool> MacSettingsStore::boolean(const QString& key) const
{
    return asBoolean(m_settings.value(key.toStdString()));
}

std::optional<QString> MacSettingsStore::string(const QString& key) const
{
    const auto value = m_settings.value(key.toStdString());
    const auto* const text = std::get_if<std::string>(&value);
    return text != nullptr ? std::optional(QString::fromStdString(*text)) : std::nullopt;
}

bool MacSettingsStore::contains(const QString& key) const
{
    return !std::holds_alternative<std::monostate>(m_settings.value(key.toStdString()));
}

void MacSettingsStore::setBoolean(const QString& key, bool value)
{
    m_settings.setBoolean(key.toStdString(), value);
}

void MacSettingsStore::setInteger(const QString& key, qint64 value)
{
    m_settings.setInteger(key.toStdString(), value);
}

} // namespace orvella
