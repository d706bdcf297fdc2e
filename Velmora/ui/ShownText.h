#pragma once

#include <QString>

namespace orvella {

/// A text that somebody else wrote, an advertiser or the service, fit to stand among the program's own words: without
/// the characters that turn the direction of the text around them (UAX #9, section 2) and without control characters
/// but those for space, and cut with "…" where it is longer than any view could show.
[[nodiscard]] QString shownText(const QString& text);

} // namespace orvella
