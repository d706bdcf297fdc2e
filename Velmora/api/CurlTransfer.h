#pragma once

#include "api/CurlLibrary.h"
#include "api/CurlOptions.h"
#include "api/Transport.h"

#include <curl/curl.h>

#include <stop_token>

namespace orvella {

/// One request on the wire, over libcurl. It is made in one thread, performed in another and may be aborted from any.
class CurlTransfer final {
public:
    explicit CurlTransfer(CurlOptions options);
    ~CurlTransfer();

    CurlTransfer(const CurlTransfer&) = delete;
    CurlTransfer& operator=(const CurlTransfer&) = delete;

    /// Sends the request and blocks until the whole reply is there. Call it once.
    [[nodiscard]] Result<HttpReply> perform(const HttpRequest& request);

    /// Makes `perform` end within moments, also when it has not begun, as `cancelled`.
    void abort();

    [[nodiscard]] bool isAborted() const { return m_stop.stop_requested(); }

private:
    void setProxy(CURL* easy, const QUrl& url);
    [[nodiscard]] CURLcode drive(CURL* easy);

    // First, because everything else goes before it.
    CurlLibrary m_library;
    CurlOptions m_options;
    CURLM* m_multi;
    std::stop_source m_stop;
};

} // namespace orvella
