#pragma once

#include "base/Json.h"

#include <QJsonValue>

namespace orvella {

// Two readings of a JSON text beside each other.

/// Whether the second value is what the first one becomes when it is written and read again. Numbers are the same to
/// the precision of a double: a fraction that a double cannot hold may come back as the integer that it is next to.
[[nodiscard]] bool isSameWhenWritten(const Json& read, const Json& readAgain);

/// Whether Qt's reader makes the same of the text. It knows numbers only as doubles and refuses less.
[[nodiscard]] bool isSameToQt(const Json& read, const QJsonValue& readByQt);

} // namespace orvella
