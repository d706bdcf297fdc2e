#include "api/CurlThread.h"

#include <QThreadStorage>

#include <filesystem>
#include <string_view>
#include <system_error>

namespace orvella {

namespace {

// By the names alone: Qt would look at every file.
bool hasHashedNames(const char* folder)
{
    constexpr std::size_t kHash = 8;
    constexpr std::string_view kFirst = ".0";
    std::error_code trouble;
    std::filesystem::directory_iterator entry(folder, trouble);
    for (const std::filesystem::directory_iterator end; !trouble && entry != end; entry.increment(trouble)) {
        const auto name = entry->path().filename().native();
        if (name.size() == kHash + kFirst.size() && name.ends_with(kFirst))
            return true;
    }
    return false;
}

} // namespace

const CurlThread& CurlThread::current()
{
    // Deliberate: reached without being handed over. The threads are the pool's, so nobody else could own what is
    // theirs; and Qt waits for what it deletes with a thread, but not for variables of the language's own.
    static QThreadStorage<CurlThread*> threads;
    if (!threads.hasLocalData())
        threads.setLocalData(new CurlThread);
    return *threads.localData();
}

CurlThread::CurlThread()
{
    if (!m_curl.isReady())
        return;
    const auto* const folder = m_curl.versionInfo(CURLVERSION_NOW)->capath;
    m_hasHashedAuthorities = folder != nullptr && hasHashedNames(folder);
    m_tlsSessions.reset(m_curl.shareInit());
    if (m_tlsSessions)
        m_curl.shareSetopt(m_tlsSessions.get(), CURLSHOPT_SHARE, CURL_LOCK_DATA_SSL_SESSION);
}

} // namespace orvella
