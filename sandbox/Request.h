#pragma once

#include <QByteArray>
#include <QHash>
#include <QString>
#include <QUrlQuery>

namespace orvella::sandbox {

/// One HTTP request, read in full.
struct Request {
    enum class Method { get, post, other };

    Method method = Method::get;
    QString path;
    QUrlQuery query;
    /// Names in lower case.
    QHash<QByteArray, QByteArray> headers;
    QByteArray body;
};

} // namespace orvella::sandbox
