#pragma once

#include "api/CurlOptions.h"
#include "api/Transport.h"

#include <curl/curl.h>

#include <stop_token>

namespace orvella {

class CurlLibrary;

/// One request on the wire, over libcurl. It is made in one thread, performed in another and may be aborted from any.
class CurlTransfer final {
public:
    explicit CurlTransfer(CurlOptions options);

    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    /// Sends the request and blocks until the whole reply is there. Call it once.
    [[nodiscard]] Result<HttpReply> perform(const HttpRequest& request);

    /// Makes `perform` end within moments, also when it has not begun, as `cancelled`.
    void abort();

    [[nodiscard]] bool isAborted() const { return m_stop.stop_requested(); }

private:
    void setProxy(const CurlLibrary& curl, CURL* easy, const QUrl& url);
    [[nodiscard]] CURLcode drive(const CurlLibrary& curl, CURL* easy);

    CurlOptions m_options;
    std::stop_source m_stop;
};

} // namespace orvella
