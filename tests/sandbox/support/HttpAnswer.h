#pragma once

#include "base/Json.h"

#include <QByteArray>
#include <QHash>

namespace orvella::sandbox {

/// What came back on a connection until it ended.
struct HttpAnswer {
    /// 0 where not even the status line came.
    int status = 0;
    /// Names in lower case.
    QHash<QByteArray, QByteArray> headers;
    QByteArray body;
    bool wasReset = false;

    /// The body's member "data" of a success, or an empty object.
    [[nodiscard]] Json::Object data() const;
    /// The body's member "error" of a refusal, or an empty text.
    [[nodiscard]] QString error() const;

    [[nodiscard]] static HttpAnswer parse(const QByteArray& bytes);
};

} // namespace orvella::sandbox
