#include "api/CurlLibrary.h"

#include <QLibrary>

namespace orvella {

// libcurl has known since 7.84 how to count its users by itself, and since 7.85 all of our options.
static_assert(LIBCURL_VERSION_NUM >= 0x075500);

namespace {

/// Of its binary interface; it has not changed since 2006.
constexpr int kVersion = 4;

template <class Function> bool find(QLibrary& library, const char* name, Function& function)
{
    function = reinterpret_cast<Function>(library.resolve(name));
    return function != nullptr;
}

} // namespace

CurlLibrary::CurlLibrary(const QString& name)
{
    // It stays loaded when this goes: what it has made of OpenSSL and of its threads may still be there.
    QLibrary library(name, kVersion);
    const bool isWhole = find(library, "curl_global_init", m_globalInit)
        && find(library, "curl_global_cleanup", m_globalCleanup) && find(library, "curl_easy_init", easyInit)
        && find(library, "curl_easy_setopt", easySetopt) && find(library, "curl_easy_getinfo", easyGetinfo)
        && find(library, "curl_easy_cleanup", easyCleanup) && find(library, "curl_slist_append", slistAppend)
        && find(library, "curl_slist_free_all", slistFreeAll) && find(library, "curl_multi_init", multiInit)
        && find(library, "curl_multi_add_handle", multiAddHandle) && find(library, "curl_multi_perform", multiPerform)
        && find(library, "curl_multi_poll", multiPoll) && find(library, "curl_multi_wakeup", multiWakeup)
        && find(library, "curl_multi_info_read", multiInfoRead)
        && find(library, "curl_multi_remove_handle", multiRemoveHandle)
        && find(library, "curl_multi_cleanup", multiCleanup) && find(library, "curl_version_info", versionInfo);
    m_isReady = isWhole && m_globalInit(CURL_GLOBAL_DEFAULT) == CURLE_OK;
    if (!m_isReady)
        qWarning("libcurl cannot be used: %s", qUtf8Printable(library.errorString()));
}

CurlLibrary::~CurlLibrary()
{
    if (m_isReady)
        m_globalCleanup();
}

} // namespace orvella
