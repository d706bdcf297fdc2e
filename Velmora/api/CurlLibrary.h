#pragma once

namespace orvella {

/// Keeps libcurl ready for use while it lives. There may be several at once, in any thread.
class CurlLibrary final {
public:
    CurlLibrary();
    ~CurlLibrary();

    CurlLibrary(const CurlLibrary&) = delete;
    CurlLibrary& operator=(const CurlLibrary&) = delete;
};

} // namespace orvella
