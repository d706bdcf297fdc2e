#include "base/Json.h"

#include <nlohmann/json.hpp>

#include <QCoreApplication>
#include <QStringDecoder>

#include <algorithm>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace orvella {

namespace {

/// The integer that a JSON number text stands for, if it is one and fits: the digits are moved by the exponent as text,
/// so that nothing is rounded on the way.
std::optional<qint64> exactInteger(std::string_view text)
{
    const auto exponentAt = text.find_first_of("eE");
    const auto mantissa = text.substr(0, exponentAt);
    const auto pointAt = mantissa.find('.');
    auto digits = std::string(mantissa.substr(0, pointAt));
    auto exponent = qint64 {0};
    if (pointAt != std::string_view::npos) {
        const auto fraction = mantissa.substr(pointAt + 1);
        digits += fraction;
        exponent -= static_cast<qint64>(fraction.size());
    }
    if (digits.find_first_not_of("-0") == std::string::npos)
        return 0;
    if (exponentAt != std::string_view::npos) {
        auto written = text.substr(exponentAt + 1);
        if (written.starts_with('+'))
            written.remove_prefix(1);
        int value = 0;
        if (std::from_chars(written.data(), written.data() + written.size(), value).ec != std::errc {})
            return std::nullopt;
        exponent += value;
    }
    for (; exponent < 0 && digits.ends_with('0'); ++exponent)
        digits.pop_back();
    constexpr auto kMostDigits = qint64 {std::numeric_limits<qint64>::digits10 + 1};
    if (exponent < 0 || exponent > kMostDigits)
        return std::nullopt;
    digits.append(static_cast<std::size_t>(exponent), '0');

    qint64 value = 0;
    const auto* const end = digits.data() + digits.size();
    const auto read = std::from_chars(digits.data(), end, value);
    if (read.ec != std::errc {} || read.ptr != end)
        return std::nullopt;
    return value;
}

/// Builds the value while the text is read.
class Builder final : public nlohmann::json_sax<nlohmann::json> {
public:
    using Keys = std::optional<std::span<const std::string_view>>;

    /// Keeps the members of these keys, or of every one.
    explicit Builder(Keys keys)
        : m_keys(keys)
    {
    }

    [[nodiscard]] Json take() { return std::move(m_root); }

    bool null() override { return add(Json()); }

    bool boolean(bool value) override { return add(Json(value)); }

    bool number_integer(number_integer_t value) override { return add(Json(qint64 {value})); }

    bool number_unsigned(number_unsigned_t value) override
    {
        if (value <= static_cast<quint64>(std::numeric_limits<qint64>::max()))
            return add(Json(static_cast<qint64>(value)));
        return add(Json(static_cast<double>(value)));
    }

    bool number_float(number_float_t value, const string_t& text) override
    {
        const auto written = withPoint(text);
        if (const auto integer = exactInteger(written))
            return add(Json(*integer));
        // Leaves the library's value, zero, where the number is too small for a double.
        static_cast<void>(std::from_chars(written.data(), written.data() + written.size(), value));
        return add(Json(value));
    }

    bool string(string_t& value) override { return add(Json(text(value))); }

    bool binary(binary_t&) override { return false; }

    bool start_object(std::size_t) override { return open(Json::Object()); }

    bool key(string_t& name) override
    {
        auto& object = m_open.back();
        object.isMemberKept = !m_keys || std::ranges::find(*m_keys, std::string_view(name)) != m_keys->end();
        if (object.isMemberKept)
            object.key = text(name);
        return true;
    }

    bool end_object() override { return close(); }

    bool start_array(std::size_t) override { return open(Json::Array()); }

    bool end_array() override { return close(); }

    bool parse_error(std::size_t, const std::string&, const nlohmann::json::exception&) override { return false; }

private:
    struct Container {
        std::variant<Json::Array, Json::Object> value;
        QString key;
        bool isMemberKept = true;
    };

    /// The library hands numbers on with the decimal point of the process's locale, whatever that is.
    static std::string withPoint(std::string number)
    {
        const auto isForeign = [](char character) {
            return std::string_view("0123456789+-eE").find(character) == std::string_view::npos;
        };
        std::ranges::replace_if(number, isForeign, '.');
        return number;
    }

    /// QString's own functions take a U+FEFF at the start for a byte order mark and drop it.
    static QString text(const string_t& utf8)
    {
        QStringDecoder decode(QStringDecoder::Utf8, QStringDecoder::Flag::ConvertInitialBom);
        return decode(QByteArrayView(utf8));
    }

    bool open(std::variant<Json::Array, Json::Object> empty)
    {
        m_open.push_back({.value = std::move(empty), .key = {}});
        return m_open.size() <= Json::kGreatestDepth;
    }

    bool close()
    {
        auto closed = std::visit([](auto& value) { return Json(std::move(value)); }, m_open.back().value);
        m_open.pop_back();
        return add(std::move(closed));
    }

    bool add(Json value)
    {
        if (m_open.empty())
            m_root = std::move(value);
        else if (auto* const array = std::get_if<Json::Array>(&m_open.back().value))
            array->push_back(std::move(value));
        else if (m_open.back().isMemberKept)
            std::get<Json::Object>(m_open.back().value).insert_or_assign(m_open.back().key, std::move(value));
        return true;
    }

    Keys m_keys;
    Json m_root;
    std::vector<Container> m_open;
};

Result<Json> built(const QByteArray& text, Builder::Keys keys)
{
    Builder builder(keys);
    // The library takes a zero byte for the end of the text.
    if (text.contains('\0') || !nlohmann::json::sax_parse(text.cbegin(), text.cend(), &builder))
        return failed(Failure::Kind::undecodable, QCoreApplication::translate("Json", "The text is not valid JSON."));
    return builder.take();
}

/// The value as the library's own, or nothing where it cannot be written.
std::optional<nlohmann::json> writable(const Json& value);

std::optional<nlohmann::json> writable(const QString& text)
{
    if (!text.isValidUtf16())
        return std::nullopt;
    return nlohmann::json(text.toStdString());
}

std::optional<nlohmann::json> writable(const Json::Array& values)
{
    auto written = nlohmann::json::array();
    for (const auto& value : values) {
        auto element = writable(value);
        if (!element)
            return std::nullopt;
        written.push_back(std::move(*element));
    }
    return written;
}

std::optional<nlohmann::json> writable(const Json::Object& members)
{
    auto written = nlohmann::json::object();
    for (const auto& [name, value] : members) {
        const auto key = writable(name);
        auto member = writable(value);
        if (!key || !member)
            return std::nullopt;
        written[key->get<std::string>()] = std::move(*member);
    }
    return written;
}

std::optional<nlohmann::json> writable(const Json& value)
{
    if (const auto* const boolean = value.boolean())
        return nlohmann::json(*boolean);
    if (const auto* const string = value.string())
        return writable(*string);
    if (const auto* const array = value.array())
        return writable(*array);
    if (const auto* const object = value.object())
        return writable(*object);
    if (const auto integer = value.integer())
        return nlohmann::json(*integer);
    if (const auto number = value.number())
        return std::isfinite(*number) ? std::optional(nlohmann::json(*number)) : std::nullopt;
    return nlohmann::json(nullptr);
}

} // namespace

Json::Json(bool value)
    : m_value(value)
{
}

Json::Json(qint64 value)
    : m_value(value)
{
}

Json::Json(double value)
    : m_value(value)
{
}

Json::Json(QString value)
    : m_value(std::move(value))
{
}

Json::Json(const QStringList& values)
    : m_value(Array(values.cbegin(), values.cend()))
{
}

Json::Json(Array value)
    : m_value(std::move(value))
{
}

Json::Json(Object value)
    : m_value(std::move(value))
{
}

Result<Json> Json::parse(const QByteArray& text)
{
    return built(text, std::nullopt);
}

Result<Json> Json::parseOnly(const QByteArray& text, std::span<const std::string_view> keys)
{
    return built(text, keys);
}

Result<QByteArray> Json::serialise() const
{
    const auto written = writable(*this);
    if (!written) {
        return failed(
            Failure::Kind::unencodable, QCoreApplication::translate("Json", "The text could not be written as JSON."));
    }
    return QByteArray::fromStdString(written->dump());
}

bool Json::isNull() const
{
    return std::holds_alternative<std::monostate>(m_value);
}

const bool* Json::boolean() const
{
    return std::get_if<bool>(&m_value);
}

const QString* Json::string() const
{
    return std::get_if<QString>(&m_value);
}

const Json::Array* Json::array() const
{
    return std::get_if<Array>(&m_value);
}

const Json::Object* Json::object() const
{
    return std::get_if<Object>(&m_value);
}

std::optional<qint64> Json::integer() const
{
    const auto* const integer = std::get_if<qint64>(&m_value);
    return integer ? std::optional(*integer) : std::nullopt;
}

std::optional<double> Json::number() const
{
    if (const auto* const integer = std::get_if<qint64>(&m_value))
        return static_cast<double>(*integer);
    const auto* const number = std::get_if<double>(&m_value);
    return number ? std::optional(*number) : std::nullopt;
}

} // namespace orvella
