#pragma once

#include "sandbox/Reply.h"

#include <QByteArray>

namespace orvella::sandbox {

/// Status line and header fields of an HTTP/1.1 answer, the empty line included. Every answer ends its connection.
[[nodiscard]] QByteArray head(const Reply& reply);

/// The whole answer.
[[nodiscard]] QByteArray written(const Reply& reply);

} // namespace orvella::sandbox
