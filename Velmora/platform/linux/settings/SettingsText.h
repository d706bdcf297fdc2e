#pragma once

#include "base/Json.h"

namespace orvella {

/// The settings as they stand in their file.
class SettingsText final {
public:
    SettingsText() = delete;

    /// Nothing where the text is not a JSON object.
    [[nodiscard]] static std::optional<Json::Object> parse(const QByteArray& text);

    /// One line for each setting, for the people who look into the file. What cannot be written is left out.
    [[nodiscard]] static QByteArray of(const Json::Object& settings);
};

} // namespace orvella
