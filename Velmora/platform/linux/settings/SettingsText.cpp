#include "platform/linux/settings/SettingsText.h"

namespace orvella {

std::optional<Json::Object> SettingsText::parse(const QByteArray& text)
{
    const auto value = Json::parse(text);
    const auto* const members = value ? value->object() : nullptr;
    return members ? std::optional(*members) : std::nullopt;
}

QByteArray SettingsText::of(const Json::Object& settings)
{
    QByteArrayList lines;
    for (const auto& [key, value] : settings) {
        const auto name = Json(key).serialise();
        const auto text = value.serialise();
        if (name && text)
            lines.append("  " + *name + ": " + *text);
    }
    return "{\n" + lines.join(",\n") + "\n}\n";
}

} // namespace orvella
