#pragma once

#include <QByteArray>
#include <QByteArrayList>

namespace orvella {

/// The ways in which a text may have been written into something else: as it is, in UTF-16, in hexadecimal digits,
/// percent-encoded, and in Base64 at any place of a longer text.
[[nodiscard]] QByteArrayList formsOf(const QByteArray& text);

/// Whether one of them is in these bytes.
[[nodiscard]] bool containsAnyForm(const QByteArray& bytes, const QByteArrayList& forms);

} // namespace orvella
