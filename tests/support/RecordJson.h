#pragma once

#include "api/Records.h"

namespace orvella {

inline Json toJson(bool value)
{
    return value;
}

inline Json toJson(qint64 value)
{
    return value;
}

inline Json toJson(double value)
{
    return value;
}

inline Json toJson(const QString& value)
{
    return value;
}

inline Json toJson(const QStringList& values)
{
    return values;
}

inline Json toJson(const Secret& value)
{
    return QString::fromUtf8(value.reveal());
}

/// A record as the service sends it. Members without a value are left out.
template <WireRecord T> Json toJson(const T& record)
{
    Json::Object object;
    const auto add = [&]<class Member>(const char* key, const Member& member) {
        if constexpr (requires { member.has_value(); }) {
            if (member)
                object.insert_or_assign(QString::fromLatin1(key), toJson(*member));
        } else {
            object.insert_or_assign(QString::fromLatin1(key), toJson(member));
        }
    };
    std::apply([&](const auto&... fields) { (add(fields.key, record.*fields.member), ...); }, T::fields());
    return object;
}

/// The text of a reply that carries this.
inline QByteArray replyOf(const Json& data)
{
    return Json(Json::Object {{QStringLiteral("ok"), true}, {QStringLiteral("data"), data}}).serialise().value();
}

} // namespace orvella
