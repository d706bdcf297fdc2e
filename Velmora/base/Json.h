#pragma once

#include "base/Result.h"

#include <QByteArray>
#include <QString>
#include <QStringList>

#include <map>
#include <optional>
#include <span>
#include <string_view>
#include <variant>
#include <vector>

namespace orvella {

/// A JSON value (RFC 8259). Integers stay exact over the whole range of `qint64`.
class Json final {
public:
    using Array = std::vector<Json>;
    using Object = std::map<QString, Json>;

    /// Deeper nesting is refused: nothing that this program reads comes near it.
    static constexpr int kGreatestDepth = 128;

    Json() = default;
    explicit(false) Json(bool value);
    explicit(false) Json(qint64 value);
    explicit(false) Json(double value);
    explicit(false) Json(QString value);
    explicit(false) Json(const QStringList& values);
    explicit(false) Json(Array value);
    explicit(false) Json(Object value);
    Json(const char*) = delete;

    /// Reads one JSON text in UTF-8. Of equal keys the last one counts. A text that is not JSON is `undecodable`.
    [[nodiscard]] static Result<Json> parse(const QByteArray& text);

    /// As `parse`, without the members of any other key, however deep: nobody will look for them. They still have to be
    /// JSON. However many there are, they cost no more than the length of the text.
    [[nodiscard]] static Result<Json> parseOnly(const QByteArray& text, std::span<const std::string_view> keys);

    /// The compact text. Fails with `unencodable` on a string that is not valid Unicode or a number that is not finite.
    [[nodiscard]] Result<QByteArray> serialise() const;

    [[nodiscard]] bool isNull() const;
    // Each answers null where the value is of another type.
    [[nodiscard]] const bool* boolean() const;
    [[nodiscard]] const QString* string() const;
    [[nodiscard]] const Array* array() const;
    [[nodiscard]] const Object* object() const;

    /// A number that is integral as it is written and within the range of `qint64`, 15, 15.0 and 1.5e1 are the same.
    [[nodiscard]] std::optional<qint64> integer() const;
    /// Any number.
    [[nodiscard]] std::optional<double> number() const;

    friend bool operator==(const Json&, const Json&) = default;

private:
    // A double here is never an exact integer.
    std::variant<std::monostate, bool, qint64, double, QString, Array, Object> m_value;
};

} // namespace orvella
