#include "api/CurlLibrary.h"

#include "base/LateLibrary.h"

namespace orvella {

// libcurl has known since 7.84 how to count its users by itself, and since 7.85 all of our options.
static_assert(LIBCURL_VERSION_NUM >= 0x075500);

namespace {

/// Of its binary interface; it has not changed since 2006.
constexpr int kVersion = 4;

} // namespace

CurlLibrary::CurlLibrary(const QString& name)
{
    LateLibrary library(name, kVersion);
    library.find(m_globalInit, "curl_global_init");
    library.find(m_globalCleanup, "curl_global_cleanup");
    library.find(easyInit, "curl_easy_init");
    library.find(easySetopt, "curl_easy_setopt");
    library.find(easyGetinfo, "curl_easy_getinfo");
    library.find(easyCleanup, "curl_easy_cleanup");
    library.find(slistAppend, "curl_slist_append");
    library.find(slistFreeAll, "curl_slist_free_all");
    library.find(multiInit, "curl_multi_init");
    library.find(multiAddHandle, "curl_multi_add_handle");
    library.find(multiPerform, "curl_multi_perform");
    library.find(multiPoll, "curl_multi_poll");
    library.find(multiWakeup, "curl_multi_wakeup");
    library.find(multiInfoRead, "curl_multi_info_read");
    library.find(multiRemoveHandle, "curl_multi_remove_handle");
    library.find(multiCleanup, "curl_multi_cleanup");
    library.find(shareInit, "curl_share_init");
    library.find(shareSetopt, "curl_share_setopt");
    library.find(shareCleanup, "curl_share_cleanup");
    library.find(versionInfo, "curl_version_info");
    if (!library.isWhole())
        qWarning("libcurl cannot be used: %s", qUtf8Printable(library.missing()));
    else if (m_globalInit(CURL_GLOBAL_DEFAULT) != CURLE_OK)
        qWarning("libcurl cannot be used: curl_global_init failed");
    else
        m_isReady = true;
}

CurlLibrary::~CurlLibrary()
{
    if (m_isReady)
        m_globalCleanup();
}

} // namespace orvella
