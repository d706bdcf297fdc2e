#include "api/CurlLibrary.h"

#include <QtGlobal>

#include <curl/curl.h>

namespace orvella {

// libcurl counts the calls and guards the count itself since version 7.84.
static_assert(LIBCURL_VERSION_NUM >= 0x075500);

CurlLibrary::CurlLibrary()
{
    if (curl_global_init(CURL_GLOBAL_DEFAULT) != CURLE_OK)
        qFatal("The HTTP library could not be started.");
}

CurlLibrary::~CurlLibrary()
{
    curl_global_cleanup();
}

} // namespace orvella
