#pragma once

#include "base/Failure.h"

#include <curl/curl.h>

namespace orvella {

/// What a viewer reads when libcurl ended a transfer with `code`, which is not `CURLE_OK`.
///
/// `verification` is the transfer's `CURLINFO_SSL_VERIFYRESULT`: what OpenSSL found wrong with the certificate.
[[nodiscard]] Failure curlFailure(CURLcode code, long verification);

/// The reply is greater than what is taken.
[[nodiscard]] Failure answerTooLarge();

} // namespace orvella
