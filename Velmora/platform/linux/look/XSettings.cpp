#include "platform/linux/look/XSettings.h"

#include "platform/linux/look/FontName.h"
#include "platform/linux/look/ThemeName.h"

#include <QtEndian>

namespace orvella {

namespace {

/// Reads numbers and texts one after the other. Once something is missing, everything is.
class Bytes final {
public:
    explicit Bytes(const QByteArray& bytes)
        : m_rest(bytes)
    {
    }

    void setBigEndian(bool isBigEndian) { m_isBigEndian = isBigEndian; }

    [[nodiscard]] bool isValid() const { return m_isValid; }

    template <class T> T number()
    {
        const auto bytes = take(sizeof(T));
        if (!m_isValid)
            return 0;
        return m_isBigEndian ? qFromBigEndian<T>(bytes.data()) : qFromLittleEndian<T>(bytes.data());
    }

    /// Texts are filled up to a multiple of four bytes.
    QByteArray text(quint32 length)
    {
        const auto bytes = take(length);
        skip((4 - length % 4) % 4);
        return bytes.toByteArray();
    }

    void skip(qsizetype length) { (void)take(length); }

private:
    QByteArrayView take(qsizetype length)
    {
        m_isValid = m_isValid && length <= m_rest.size();
        if (!m_isValid)
            return {};
        const auto taken = m_rest.first(length);
        m_rest = m_rest.sliced(length);
        return taken;
    }

    QByteArrayView m_rest;
    bool m_isBigEndian = false;
    bool m_isValid = true;
};

enum class Kind : quint8 { number = 0, text = 1, colour = 2 };

/// False where there is no such kind of setting.
bool readSetting(Bytes& bytes, XSettings& settings)
{
    const auto kind = Kind {bytes.number<quint8>()};
    bytes.skip(1);
    const auto nameLength = bytes.number<quint16>();
    const auto name = bytes.text(nameLength);
    // The serial number of its last change.
    bytes.skip(4);
    switch (kind) {
    case Kind::number:
        settings.insert(name, bytes.number<qint32>());
        return true;
    case Kind::text:
        settings.insert(name, bytes.text(bytes.number<quint32>()));
        return true;
    case Kind::colour:
        bytes.skip(8);
        return true;
    }
    return false;
}

QString text(const XSettings& settings, const QByteArray& name)
{
    const auto value = settings.value(name);
    const auto* const bytes = std::get_if<QByteArray>(&value);
    return bytes != nullptr ? QString::fromUtf8(*bytes) : QString();
}

bool isOff(const XSettings& settings, const QByteArray& name)
{
    const auto found = settings.constFind(name);
    return found != settings.constEnd() && *found == XSettings::mapped_type(qint32 {0});
}

} // namespace

std::optional<XSettings> parseXSettings(const QByteArray& data)
{
    constexpr quint8 kBigEndian = 1;
    Bytes bytes(data);
    const auto order = bytes.number<quint8>();
    if (order > kBigEndian)
        return std::nullopt;
    bytes.setBigEndian(order == kBigEndian);
    bytes.skip(3);
    // The serial number of the list.
    bytes.skip(4);
    const auto count = bytes.number<quint32>();
    XSettings settings;
    for (quint32 read = 0; read < count && bytes.isValid(); ++read) {
        if (!readSetting(bytes, settings))
            return std::nullopt;
    }
    return bytes.isValid() ? std::optional(settings) : std::nullopt;
}

LookWishes xSettingsWishes(const XSettings& settings)
{
    auto wishes = themeWishes(text(settings, "Net/ThemeName"));
    wishes.fontFamily = fontFamily(text(settings, "Gtk/FontName"));
    wishes.fixedFontFamily = fontFamily(text(settings, "Gtk/MonospaceFontName"));
    wishes.isMotionReduced = isOff(settings, "Gtk/EnableAnimations") || isOff(settings, "Net/EnableAnimations");
    return wishes;
}

} // namespace orvella
