#pragma once

#include "api/CurlLibrary.h"

#include <memory>

namespace orvella {

/// What a thread keeps from one transfer to the next, for as long as it lives: a pool's thread goes some seconds after
/// its last transfer. It is for that thread alone.
class CurlThread final {
public:
    /// Of the thread that asks.
    [[nodiscard]] static const CurlThread& current();

    CurlThread(const CurlThread&) = delete;
    CurlThread& operator=(const CurlThread&) = delete;
    ~CurlThread() = default;

    [[nodiscard]] const CurlLibrary& curl() const { return m_curl; }

    /// For CURLOPT_SHARE. A further connection to the same server, under the same trust, goes on with the session of
    /// TLS of the one before: no certificate is sent and checked again. Nothing else is shared.
    [[nodiscard]] CURLSH* tlsSessions() const { return m_tlsSessions.get(); }

    /// Whether the system keeps its trusted certificates also one by one, each under its hash.
    [[nodiscard]] bool hasHashedAuthorities() const { return m_hasHashedAuthorities; }

private:
    CurlThread();

    CurlLibrary m_curl;
    std::unique_ptr<CURLSH, decltype(&curl_share_cleanup)> m_tlsSessions {nullptr, m_curl.shareCleanup};
    bool m_hasHashedAuthorities = false;
};

} // namespace orvella
