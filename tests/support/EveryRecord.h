#pragma once

#include "support/RecordJson.h"
#include "support/Samples.h"

#include <utility>

namespace orvella {

/// Calls `visit` with a sample of every record that the service sends and that has members.
template <class Visitor> void forEveryRecord(Visitor visit)
{
    visit(aRegistration());
    visit(aWallet());
    visit(aWallet().wallet);
    visit(anAd());
    visit(anOffer());
    visit(aSession());
    visit(aCompletion());
    visit(aClick());
}

/// Calls `visit` with every record's sample and each of its members, as `fields` lists them: with its key, and with a
/// pointer to it.
template <class Visitor> void forEveryMember(Visitor visit)
{
    forEveryRecord([&visit]<WireRecord T>(const T& record) {
        std::apply([&](const auto&... fields) { (visit(record, QString::fromLatin1(fields.key), fields.member), ...); },
            T::fields());
    });
}

/// What is wrong with a reply whose record has one member changed; empty where nothing is.
template <WireRecord T> QString problemWith(const T& record, const QString& key, const Json& value)
{
    const auto json = toJson(record);
    auto members = *json.object();
    members.insert_or_assign(key, value);
    const auto decoded = decodeRecord<APIResponse<T>>(replyOf(members));
    return decoded ? QString() : decoded.error().description;
}

/// As `problemWith`, with the bytes of the value just as they are.
template <WireRecord T> QString problemWithBytes(const T& record, const QString& key, const QByteArray& value)
{
    const QByteArray place = "\"the value goes here\"";
    const auto json = toJson(record);
    auto members = *json.object();
    members.insert_or_assign(key, QStringLiteral("the value goes here"));
    const auto decoded = decodeRecord<APIResponse<T>>(replyOf(members).replace(place, value));
    return decoded ? QString() : decoded.error().description;
}

} // namespace orvella
