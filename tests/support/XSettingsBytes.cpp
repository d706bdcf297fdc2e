#include "support/XSettingsBytes.h"

#include <QtEndian>

namespace orvella {

namespace {

template <class T> QByteArray number(T value, XSettingsBytes::Order order)
{
    QByteArray bytes(sizeof(T), Qt::Uninitialized);
    if (order == XSettingsBytes::Order::bigEndian)
        qToBigEndian(value, bytes.data());
    else
        qToLittleEndian(value, bytes.data());
    return bytes;
}

QByteArray filledUp(QByteArray text)
{
    while (text.size() % 4 != 0)
        text.append('\0');
    return text;
}

QByteArray valueOf(const XSettingsBytes::Setting& setting, XSettingsBytes::Order order)
{
    if (const auto* const whole = std::get_if<qint32>(&setting.second))
        return number(*whole, order);
    if (const auto* const text = std::get_if<QByteArray>(&setting.second))
        return number(static_cast<quint32>(text->size()), order) + filledUp(*text);
    QByteArray colour;
    for (const auto channel : std::get<XSettingsBytes::Colour>(setting.second))
        colour += number(channel, order);
    return colour;
}

} // namespace

QByteArray XSettingsBytes::of(const std::vector<Setting>& settings, Order order)
{
    constexpr quint32 kSerial = 7;
    auto bytes = filledUp(QByteArray(1, order == Order::bigEndian ? '\1' : '\0')) + number(kSerial, order)
        + number(static_cast<quint32>(settings.size()), order);
    for (const auto& setting : settings) {
        const auto& [name, value] = setting;
        bytes += QByteArray(1, static_cast<char>(value.index())) + '\0'
            + number(static_cast<quint16>(name.size()), order) + filledUp(name) + number(kSerial, order)
            + valueOf(setting, order);
    }
    return bytes;
}

} // namespace orvella
