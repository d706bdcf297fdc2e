#pragma once

#include <QString>
#include <QUrl>

#include <optional>

namespace orvella {

/// The text as the address of a web page, fit to be handed to a browser: absolute, http or https, with a host.
///
/// Nothing for whatever programs might read in different ways: spaces, control characters, backslashes, a missing "//",
/// characters that may not stand in an address, invisible or escaped ones in the host, numbers that only resemble an IP
/// address, ports beyond 65535. User names are refused as RFC 9110, section 4.2.4, advises: they make one host look
/// like another. A host in other scripts becomes its ASCII form, so what was checked is what a browser opens.
[[nodiscard]] std::optional<QUrl> webAddress(const QString& text);

} // namespace orvella
