#include "platform/OverlaySettings.h"

#include <QCoreApplication>

namespace orvella {

Result<OverlaySettings::Entry> OverlaySettings::Entry::parse(const QString& text)
{
    const auto equals = text.indexOf(u'=');
    if (equals < 1) {
        return failed(Failure::Kind::refused,
            QCoreApplication::translate("OverlaySettings", "\"%1\" is not of the form KEY=VALUE.").arg(text));
    }
    const auto value = text.sliced(equals + 1);
    return Entry {text.first(equals), Json::parse(value.toUtf8()).value_or(Json(value))};
}

OverlaySettings::OverlaySettings(SettingsStore& below, const std::vector<Entry>& entries)
    : m_below(below)
{
    for (const auto& entry : entries)
        m_values.insert_or_assign(entry.key, entry.value);
}

std::optional<bool> OverlaySettings::boolean(const QString& key) const
{
    const auto found = m_values.find(key);
    if (found == m_values.end())
        return m_below.boolean(key);
    const auto* const value = found->second.boolean();
    return value ? std::optional(*value) : std::nullopt;
}

std::optional<QString> OverlaySettings::string(const QString& key) const
{
    const auto found = m_values.find(key);
    if (found == m_values.end())
        return m_below.string(key);
    const auto* const value = found->second.string();
    return value ? std::optional(*value) : std::nullopt;
}

bool OverlaySettings::contains(const QString& key) const
{
    return m_values.contains(key) || m_below.contains(key);
}

void OverlaySettings::setBoolean(const QString& key, bool value)
{
    m_values.erase(key);
    m_below.setBoolean(key, value);
}

void OverlaySettings::setInteger(const QString& key, qint64 value)
{
    m_values.erase(key);
    m_below.setInteger(key, value);
}

} // namespace orvella
