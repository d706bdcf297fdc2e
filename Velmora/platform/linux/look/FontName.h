#pragma once

#include <QString>

namespace orvella {

/// The family in the name of a font as the desktops' settings have it, "Noto Sans Bold 10": without the words of its
/// style and its size (Pango, pango_font_description_from_string). Empty where there is none.
[[nodiscard]] QString fontFamily(const QString& name);

} // namespace orvella
