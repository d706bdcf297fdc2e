#include "DrawnValue.h"

#include <QList>

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace orvella {

namespace {

// The numbers around which mistakes gather.
constexpr std::array<qint64, 12> kEdges {0, 1, -1, 59, 60, 900, 901, (qint64 {1} << 53) - 1, (qint64 {1} << 53) + 1,
    std::numeric_limits<qint32>::max(), std::numeric_limits<qint64>::max(), std::numeric_limits<qint64>::min()};

std::string shortest(double value)
{
    std::array<char, 32> text {};
    const auto end = std::to_chars(text.data(), text.data() + text.size(), value).ptr;
    return {text.data(), end};
}

char32_t drawCharacter(FuzzedDataProvider& bytes)
{
    constexpr char32_t kFirstSurrogate = 0xD800;
    constexpr char32_t kAfterSurrogates = 0xE000;
    const auto plain = bytes.ConsumeIntegral<std::uint8_t>();
    // Most are plain, as most are in life. One is taken for a byte order mark where there is none.
    if (plain < 0xC0)
        return plain;
    if (plain < 0xC8)
        return QChar::ByteOrderMark;
    const auto drawn = bytes.ConsumeIntegralInRange<std::uint32_t>(0, QChar::LastValidCodePoint);
    return drawn >= kFirstSurrogate && drawn < kAfterSurrogates ? drawn - kFirstSurrogate : drawn;
}

/// QString::fromUcs4 would drop a U+FEFF.
QString textOf(char32_t character)
{
    return QStringView(QChar::fromUcs4(character)).toString();
}

std::string escape(char16_t unit)
{
    constexpr auto kDigits = "0123456789abcdef";
    return {
        '\\', 'u', kDigits[unit >> 12], kDigits[(unit >> 8) & 0xF], kDigits[(unit >> 4) & 0xF], kDigits[unit & 0xF]};
}

bool mustBeEscaped(char32_t character)
{
    return character < 0x20 || character == U'"' || character == U'\\';
}

} // namespace

DrawnFault DrawnFault::under(const QString& key) const
{
    if (path.isEmpty())
        return {key, problem};
    return {path.startsWith(u'[') ? key + path : key + u'.' + path, problem};
}

std::string drawBoolean(FuzzedDataProvider& bytes, bool& value)
{
    value = bytes.ConsumeBool();
    return value ? "true" : "false";
}

std::string drawInteger(FuzzedDataProvider& bytes, qint64& value)
{
    value = bytes.ConsumeBool() ? bytes.PickValueInArray(kEdges) : bytes.ConsumeIntegral<qint64>();
    const auto plain = std::to_string(value);
    // More noughts before or behind this one would not be JSON.
    switch (value == 0 ? 0 : bytes.ConsumeIntegralInRange(0, 4)) {
    case 0:
        return plain + ".0";
    case 1:
        return plain + "00e-2";
    case 2:
        return plain + "E+0";
    case 3:
        return plain + "0.000e-1";
    default:
        return plain;
    }
}

std::string drawNumber(FuzzedDataProvider& bytes, double& value)
{
    if (bytes.ConsumeBool()) {
        qint64 integer = 0;
        auto text = drawInteger(bytes, integer);
        value = static_cast<double>(integer);
        return text;
    }
    value = bytes.ConsumeFloatingPoint<double>();
    if (!std::isfinite(value))
        value = 0.1;
    return shortest(value);
}

std::string drawFraction(FuzzedDataProvider& bytes)
{
    switch (bytes.ConsumeIntegralInRange(0, 4)) {
    case 0:
        return "9223372036854775808";
    case 1:
        return "-9223372036854775809";
    case 2:
        return "1e300";
    case 3:
        return "1e-400";
    default:
        return std::to_string(bytes.ConsumeIntegral<qint64>()) + ".000000000000000000001";
    }
}

std::string written(FuzzedDataProvider& bytes, const QString& text)
{
    std::string json = "\"";
    for (const char32_t character : text.toUcs4()) {
        const auto part = textOf(character);
        if (!mustBeEscaped(character) && bytes.ConsumeIntegral<std::uint8_t>() < 0xE0) {
            json += part.toStdString();
            continue;
        }
        for (const auto unit : part)
            json += escape(unit.unicode());
    }
    return json + '"';
}

std::string drawText(FuzzedDataProvider& bytes, QString& value)
{
    constexpr int kMostCharacters = 24;
    value.clear();
    const auto length = bytes.ConsumeIntegralInRange(0, kMostCharacters);
    for (int drawn = 0; drawn < length; ++drawn) {
        const auto character = drawCharacter(bytes);
        value += textOf(character);
    }
    return written(bytes, value);
}

std::string drawAnything(FuzzedDataProvider& bytes, JsonKind kind)
{
    bool boolean = false;
    qint64 integer = 0;
    QString text;
    switch (kind) {
    case JsonKind::null:
        return "null";
    case JsonKind::boolean:
        return drawBoolean(bytes, boolean);
    case JsonKind::integer:
        return drawInteger(bytes, integer);
    case JsonKind::fraction:
        return drawFraction(bytes);
    case JsonKind::text:
        return drawText(bytes, text);
    case JsonKind::list:
        return bytes.ConsumeBool() ? "[]" : "[[{}]]";
    case JsonKind::object:
        return bytes.ConsumeBool() ? "{}" : R"({"":{"linked":[true]}})";
    }
    return "null";
}

} // namespace orvella
