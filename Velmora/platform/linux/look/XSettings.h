#pragma once

#include "platform/linux/look/LookWishes.h"

#include <QByteArray>
#include <QHash>

#include <optional>
#include <variant>

namespace orvella {

/// The desktop's settings on X11 by name: numbers and texts. Colours are left out.
using XSettings = QHash<QByteArray, std::variant<qint32, QByteArray>>;

/// Reads the property that carries them. Nothing where the bytes are not a whole and valid list.
[[nodiscard]] std::optional<XSettings> parseXSettings(const QByteArray& bytes);

/// What these settings say of how things are to look.
[[nodiscard]] LookWishes xSettingsWishes(const XSettings& settings);

} // namespace orvella
