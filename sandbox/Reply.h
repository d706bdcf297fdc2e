#pragma once

#include <QByteArray>

#include <utility>
#include <vector>

namespace orvella::sandbox {

/// One HTTP answer, before it is written.
struct Reply {
    int status = 200;
    QByteArray contentType;
    QByteArray body;
    /// Further headers, names in lower case.
    std::vector<std::pair<QByteArray, QByteArray>> headers;
};

} // namespace orvella::sandbox
