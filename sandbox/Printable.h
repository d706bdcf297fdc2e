#pragma once

#include <QString>

namespace orvella::sandbox {

/// A text from outside, made fit for one line of a terminal: what is not printable becomes U+FFFD.
[[nodiscard]] QString printable(const QString& text);

/// A text from outside, made fit for HTML, also within a quoted attribute.
[[nodiscard]] QString htmlText(const QString& text);

} // namespace orvella::sandbox
