#pragma once

#include <QString>

#include <curl/curl.h>

namespace orvella {

/// libcurl, loaded when it is first needed: it brings nearly thirty libraries along, for which no start is to wait.
///
/// It is kept ready for use while this lives. There may be several at once, in any thread. The functions are libcurl's
/// own, and not to be called where `isReady` is false.
class CurlLibrary final {
public:
    /// Another name than libcurl's own finds nothing.
    explicit CurlLibrary(const QString& name = QStringLiteral("curl"));
    ~CurlLibrary();

    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;

    [[nodiscard]] bool isReady() const { return m_isReady; }

    decltype(&curl_easy_init) easyInit = nullptr;
    decltype(&curl_easy_setopt) easySetopt = nullptr;
    decltype(&curl_easy_getinfo) easyGetinfo = nullptr;
    decltype(&curl_easy_cleanup) easyCleanup = nullptr;
    decltype(&curl_slist_append) slistAppend = nullptr;
    decltype(&curl_slist_free_all) slistFreeAll = nullptr;
    decltype(&curl_multi_init) multiInit = nullptr;
    decltype(&curl_multi_add_handle) multiAddHandle = nullptr;
    decltype(&curl_multi_perform) multiPerform = nullptr;
    decltype(&curl_multi_poll) multiPoll = nullptr;
    decltype(&curl_multi_wakeup) multiWakeup = nullptr;
    decltype(&curl_multi_info_read) multiInfoRead = nullptr;
    decltype(&curl_multi_remove_handle) multiRemoveHandle = nullptr;
    decltype(&curl_multi_cleanup) multiCleanup = nullptr;
    decltype(&curl_share_init) shareInit = nullptr;
    decltype(&curl_share_setopt) shareSetopt = nullptr;
    decltype(&curl_share_cleanup) shareCleanup = nullptr;
    decltype(&curl_version_info) versionInfo = nullptr;

private:
    decltype(&curl_global_init) m_globalInit = nullptr;
    decltype(&curl_global_cleanup) m_globalCleanup = nullptr;
    bool m_isReady = false;
};

} // namespace orvella
