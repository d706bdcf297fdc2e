#pragma once

#include "DrawnValue.h"
#include "api/Records.h"

#include <algorithm>
#include <vector>

namespace orvella {

// Draws the JSON of a wire record from the fuzzer's bytes, with faults in it, and what reading it has to come to: the
// record, or the first of the faults in the order in which the record lists its members.

/// The JSON of one value.
struct Drawn {
    std::string json;
    DrawnFault fault;
};

/// A value that the member does not take.
inline Drawn drawOtherThan(FuzzedDataProvider& bytes, std::initializer_list<JsonKind> taken, const char* problem)
{
    const auto kind = bytes.ConsumeEnum<JsonKind>();
    const bool isTaken = std::ranges::find(taken, kind) != taken.end();
    return {drawAnything(bytes, isTaken ? JsonKind::null : kind), {{}, QString::fromLatin1(problem)}};
}

/// One value in eight is a wrong one.
inline bool drawsFault(FuzzedDataProvider& bytes)
{
    return bytes.ConsumeIntegral<std::uint8_t>() >= 0xE0;
}

inline Drawn draw(FuzzedDataProvider& bytes, bool& value)
{
    if (drawsFault(bytes))
        return drawOtherThan(bytes, {JsonKind::boolean}, "is not true or false");
    return {drawBoolean(bytes, value), {}};
}

inline Drawn draw(FuzzedDataProvider& bytes, qint64& value)
{
    if (drawsFault(bytes))
        return drawOtherThan(bytes, {JsonKind::integer}, "is not an integer");
    return {drawInteger(bytes, value), {}};
}

inline Drawn draw(FuzzedDataProvider& bytes, double& value)
{
    if (drawsFault(bytes))
        return drawOtherThan(bytes, {JsonKind::integer, JsonKind::fraction}, "is not a number");
    return {drawNumber(bytes, value), {}};
}

inline Drawn draw(FuzzedDataProvider& bytes, QString& value)
{
    if (drawsFault(bytes))
        return drawOtherThan(bytes, {JsonKind::text}, "is not a text");
    return {drawText(bytes, value), {}};
}

inline Drawn draw(FuzzedDataProvider& bytes, Secret& value)
{
    QString text;
    auto drawn = draw(bytes, text);
    value = Secret(text.toUtf8());
    return drawn;
}

inline Drawn draw(FuzzedDataProvider& bytes, QStringList& value)
{
    if (drawsFault(bytes))
        return drawOtherThan(bytes, {JsonKind::list}, "is not a list");
    constexpr int kMostElements = 4;
    Drawn drawn;
    const auto count = bytes.ConsumeIntegralInRange(0, kMostElements);
    for (int index = 0; index < count; ++index) {
        const auto element = draw(bytes, value.emplaceBack());
        drawn.json += (index > 0 ? ", " : "") + element.json;
        if (!drawn.fault && element.fault)
            drawn.fault = element.fault.under(QStringLiteral("[%1]").arg(index));
    }
    drawn.json = '[' + drawn.json + ']';
    return drawn;
}

template <WireRecord T> Drawn draw(FuzzedDataProvider& bytes, T& record);

/// The members of an object, as JSON.
struct DrawnMember {
    std::string key;
    std::string value;
};
using DrawnMembers = std::vector<DrawnMember>;

template <class Member>
DrawnFault drawMember(FuzzedDataProvider& bytes, const QString& key, Member& value, DrawnMembers& members)
{
    if (drawsFault(bytes))
        return {key, QStringLiteral("is missing")};
    auto drawn = draw(bytes, value);
    members.push_back({written(bytes, key), drawn.json});
    return drawn.fault ? drawn.fault.under(key) : DrawnFault();
}

template <class Member>
DrawnFault drawMember(
    FuzzedDataProvider& bytes, const QString& key, std::optional<Member>& value, DrawnMembers& members)
{
    if (bytes.ConsumeIntegral<std::uint8_t>() < 0x40)
        return {};
    const auto drawn = draw(bytes, value.emplace());
    members.push_back({written(bytes, key), drawn.json});
    if (drawn.json != "null")
        return drawn.fault ? drawn.fault.under(key) : DrawnFault();
    value.reset();
    return {};
}

/// A member that has no say: an unknown one, or an earlier one of the same name.
inline DrawnMember drawUnheard(FuzzedDataProvider& bytes, const DrawnMembers& members)
{
    const auto value = drawAnything(bytes, bytes.ConsumeEnum<JsonKind>());
    if (!members.empty() && bytes.ConsumeBool())
        return {members[bytes.ConsumeIntegralInRange<std::size_t>(0, members.size() - 1)].key, value};
    QString name;
    auto key = drawText(bytes, name);
    // No record has a member of this name.
    key.insert(1, "~");
    return {key, value};
}

template <WireRecord T> Drawn draw(FuzzedDataProvider& bytes, T& record)
{
    constexpr auto kFields = T::fields();
    // A record without members takes anything.
    if constexpr (std::tuple_size_v<decltype(kFields)> == 0) {
        return {drawAnything(bytes, bytes.ConsumeEnum<JsonKind>()), {}};
    } else {
        if (drawsFault(bytes))
            return drawOtherThan(bytes, {JsonKind::object}, "is not an object");
        DrawnMembers members;
        Drawn drawn;
        const auto drawNext = [&](const auto& field) {
            const auto fault = drawMember(bytes, QString::fromLatin1(field.key), record.*field.member, members);
            if (!drawn.fault)
                drawn.fault = fault;
        };
        std::apply([&](const auto&... fields) { (drawNext(fields), ...); }, kFields);
        const auto unheard = bytes.ConsumeIntegralInRange(0, 2);
        std::ranges::rotate(
            members, members.begin() + bytes.ConsumeIntegralInRange<std::ptrdiff_t>(0, std::ssize(members)));
        for (int count = 0; count < unheard; ++count)
            members.insert(members.begin(), drawUnheard(bytes, members));
        for (const auto& [key, value] : members)
            drawn.json += (drawn.json.empty() ? "" : ",\n") + key + ": " + value;
        drawn.json = '{' + drawn.json + '}';
        return drawn;
    }
}

} // namespace orvella
