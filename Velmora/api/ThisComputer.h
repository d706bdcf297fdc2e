#pragma once

#include <QString>

namespace orvella {

/// Whether what goes to this host, as `QUrl::host` has it, cannot leave the computer: its loopback addresses, and the
/// names that libcurl resolves to them without asking anyone. "localhost." is not one of those.
///
/// RFC 6761, section 6.3; RFC 1122, section 3.2.1.3; RFC 4291, sections 2.5.3 and 2.5.5.2.
[[nodiscard]] bool isThisComputer(const QString& host);

} // namespace orvella
