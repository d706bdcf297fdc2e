#pragma once

#include <QString>

#include <functional>

namespace orvella::sandbox {

/// Tells whoever runs the service what happens, one line at a time. Never a token.
using Announcer = std::function<void(const QString& line)>;

} // namespace orvella::sandbox
