#pragma once

#include "base/Secret.h"

#include <QByteArray>
#include <QString>

#include <optional>

namespace orvella::sandbox {

/// A new token: 256 bits from the system's cryptographic source, in base64url (RFC 4648).
[[nodiscard]] Secret makeToken();

/// What is stored of a token: its SHA-256.
[[nodiscard]] QByteArray hashOf(const Secret& token);

/// A new identifier, "dev_…": 128 bits from the same source.
[[nodiscard]] QString makeIdentifier(const QString& prefix);

/// A new activation code: "XXXX-XXXX" out of 32 letters and digits that are not mistaken for one another, 40 bits.
[[nodiscard]] QString makeActivationCode();

/// What a viewer typed, as a code is stored: capital letters, blanks and hyphens do not matter. Nothing where it cannot
/// be a code.
[[nodiscard]] std::optional<QString> readActivationCode(const QString& typed);

} // namespace orvella::sandbox
