#include "JsonTwins.h"

#include <QJsonArray>
#include <QJsonObject>

#include <algorithm>

namespace orvella {

bool isSameWhenWritten(const Json& read, const Json& readAgain)
{
    if (const auto* const members = read.object()) {
        const auto* const others = readAgain.object();
        return others && std::ranges::equal(*members, *others, [](const auto& member, const auto& other) {
            return member.first == other.first && isSameWhenWritten(member.second, other.second);
        });
    }
    if (const auto* const elements = read.array()) {
        const auto* const others = readAgain.array();
        return others && std::ranges::equal(*elements, *others, isSameWhenWritten);
    }
    if (read.number() && !read.integer())
        return read.number() == readAgain.number();
    return read == readAgain;
}

bool isSameToQt(const Json& read, const QJsonValue& readByQt)
{
    if (const auto* const members = read.object()) {
        const auto others = readByQt.toObject();
        return readByQt.isObject() && std::ssize(*members) == others.size()
            && std::ranges::all_of(*members, [&others](const auto& member) {
                   return others.contains(member.first) && isSameToQt(member.second, others.value(member.first));
               });
    }
    if (const auto* const elements = read.array()) {
        const auto others = readByQt.toArray();
        return readByQt.isArray()
            && std::ranges::equal(*elements, others,
                [](const Json& element, const QJsonValue& other) { return isSameToQt(element, other); });
    }
    if (const auto* const text = read.string())
        return readByQt.isString() && readByQt.toString() == *text;
    if (const auto* const boolean = read.boolean())
        return readByQt.isBool() && readByQt.toBool() == *boolean;
    if (read.isNull())
        return readByQt.isNull();
    return readByQt.isDouble() && readByQt.toDouble() == read.number();
}

} // namespace orvella
