#pragma once

#include "base/Json.h"
#include "base/Secret.h"

#include <QCoreApplication>
#include <QStringList>

#include <concepts>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <vector>

namespace orvella {

/// One member of a wire record: its JSON key, and where the value goes. A member of type `std::optional` may be absent
/// or null in the JSON, every other one is required.
template <class Record, class Member> struct Field {
    const char* key;
    Member Record::* member;
};

/// A record that replies carry: it lists its members in a static function `fields()`.
template <class T>
concept WireRecord = requires { T::fields(); };

/// Where a JSON value is not what the record says, and how.
struct Mismatch {
    QString path;
    QString problem;

    [[nodiscard]] Mismatch under(const QString& key) &&;
    [[nodiscard]] Failure failure() const;
};

// The readers of the single values. Each answers what is wrong, or nothing once `out` has the value.
[[nodiscard]] std::optional<Mismatch> readValue(const Json& value, bool& out);
[[nodiscard]] std::optional<Mismatch> readValue(const Json& value, qint64& out);
[[nodiscard]] std::optional<Mismatch> readValue(const Json& value, double& out);
[[nodiscard]] std::optional<Mismatch> readValue(const Json& value, QString& out);
[[nodiscard]] std::optional<Mismatch> readValue(const Json& value, Secret& out);
[[nodiscard]] std::optional<Mismatch> readValue(const Json& value, QStringList& out);
template <WireRecord T> [[nodiscard]] std::optional<Mismatch> readValue(const Json& value, T& out);

/// The member called `key`, or nothing where there is none or it is null.
[[nodiscard]] const Json* presentMember(const Json::Object& object, const QString& key);

template <class T>
[[nodiscard]] std::optional<Mismatch> readMember(const Json::Object& object, const QString& key, T& out)
{
    const auto member = object.find(key);
    if (member == object.end())
        return Mismatch {key, QCoreApplication::translate("Record", "is missing")};
    auto mismatch = readValue(member->second, out);
    if (mismatch)
        return std::move(*mismatch).under(key);
    return std::nullopt;
}

template <class T>
[[nodiscard]] std::optional<Mismatch> readMember(const Json::Object& object, const QString& key, std::optional<T>& out)
{
    if (!presentMember(object, key)) {
        out.reset();
        return std::nullopt;
    }
    return readMember(object, key, out.emplace());
}

template <WireRecord T> std::optional<Mismatch> readValue(const Json& value, T& out)
{
    constexpr auto kFields = T::fields();
    // A record without members reads nothing, whatever the value is.
    if constexpr (std::tuple_size_v<decltype(kFields)> != 0) {
        const auto* const object = value.object();
        if (!object)
            return Mismatch {{}, QCoreApplication::translate("Record", "is not an object")};
        std::optional<Mismatch> mismatch;
        const auto readNext = [&](const auto& field) {
            mismatch = readMember(*object, QString::fromLatin1(field.key), out.*field.member);
            return !mismatch;
        };
        std::apply([&](const auto&... fields) { static_cast<void>((readNext(fields) && ...)); }, kFields);
        return mismatch;
    }
    return std::nullopt;
}

// The keys of a member's value: a record has those of its members and of the records in them.
template <class T> void appendKeys(std::vector<std::string_view>& /*keys*/, std::type_identity<T> /*member*/) {}
template <WireRecord T> void appendKeys(std::vector<std::string_view>& keys, std::type_identity<T> record);

template <class T> void appendKeys(std::vector<std::string_view>& keys, std::type_identity<std::optional<T>> /*member*/)
{
    appendKeys(keys, std::type_identity<T>());
}

template <WireRecord T> void appendKeys(std::vector<std::string_view>& keys, std::type_identity<T> /*record*/)
{
    const auto append = [&keys]<class Record, class Member>(const Field<Record, Member>& field) {
        keys.emplace_back(field.key);
        appendKeys(keys, std::type_identity<Member>());
    };
    std::apply([&append](const auto&... fields) { (append(fields), ...); }, T::fields());
}

/// Reads one record from a JSON text. Unknown keys are ignored. A failure names the path and the problem, for example
/// "data.wallet.availableCents is not an integer".
template <WireRecord T> [[nodiscard]] Result<T> decodeRecord(const QByteArray& text)
{
    std::vector<std::string_view> keys;
    appendKeys(keys, std::type_identity<T>());
    const auto json = Json::parseOnly(text, keys);
    if (!json)
        return std::unexpected(Mismatch {{}, QCoreApplication::translate("Record", "is not JSON")}.failure());
    T record;
    if (const auto mismatch = readValue(*json, record))
        return std::unexpected(mismatch->failure());
    return record;
}

} // namespace orvella
