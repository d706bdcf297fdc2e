#include "platform/linux/look/PortalSettings.h"

#include "platform/linux/look/FontName.h"
#include "platform/linux/look/ThemeName.h"

#include <QDBusVariant>

#include <cmath>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr auto kAppearance = "org.freedesktop.appearance"_L1;
constexpr auto kInterface = "org.gnome.desktop.interface"_L1;
constexpr auto kAccessibility = "org.gnome.desktop.a11y.interface"_L1;
constexpr auto kPlasma = "org.kde.kdeglobals.KDE"_L1;

QVariant value(const PortalSettings& settings, QLatin1StringView group, QLatin1StringView key)
{
    auto found = settings.value(group).value(key);
    // Some portals wrap a value once more.
    while (found.metaType() == QMetaType::fromType<QDBusVariant>())
        found = found.value<QDBusVariant>().variant();
    return found;
}

/// One of the numbers of org.freedesktop.appearance, which come without a sign.
bool is(const QVariant& value, uint wanted)
{
    return value.metaType() == QMetaType::fromType<uint>() && value.toUInt() == wanted;
}

bool is(const QVariant& value, bool wanted)
{
    return value.metaType() == QMetaType::fromType<bool>() && value.toBool() == wanted;
}

QString text(const QVariant& value)
{
    return value.metaType() == QMetaType::fromType<QString>() ? value.toString() : QString();
}

DesktopLook::Scheme schemeOf(const PortalSettings& settings)
{
    using enum DesktopLook::Scheme;
    const auto general = value(settings, kAppearance, "color-scheme"_L1);
    const auto gnome = text(value(settings, kInterface, "color-scheme"_L1));
    if (is(general, 1U))
        return dark;
    if (is(general, 2U))
        return light;
    if (gnome == u"prefer-dark")
        return dark;
    if (gnome == u"prefer-light")
        return light;
    return unknown;
}

/// Plasma's factor for the length of animations, which comes as a text or as a number.
bool isNoDuration(const QVariant& value)
{
    bool isNumber = false;
    const auto factor = value.toDouble(&isNumber);
    return isNumber && factor <= 0 && value.metaType() != QMetaType::fromType<bool>();
}

bool isMotionReduced(const PortalSettings& settings)
{
    return is(value(settings, kAppearance, "reduced-motion"_L1), 1U)
        || is(value(settings, kInterface, "enable-animations"_L1), false)
        || isNoDuration(value(settings, kPlasma, "AnimationDurationFactor"_L1));
}

double textScaleOf(const PortalSettings& settings)
{
    const auto factor = value(settings, kInterface, "text-scaling-factor"_L1);
    const auto scale = factor.metaType() == QMetaType::fromType<double>() ? factor.toDouble() : 1;
    return std::isfinite(scale) && scale > 0 ? scale : 1;
}

} // namespace

QStringList lookNamespaces()
{
    return {kAppearance, kInterface, kAccessibility, kPlasma};
}

LookWishes portalWishes(const PortalSettings& settings)
{
    const LookWishes said {
        .scheme = schemeOf(settings),
        .isHighContrast = is(value(settings, kAppearance, "contrast"_L1), 1U)
            || is(value(settings, kAccessibility, "high-contrast"_L1), true),
        .isMotionReduced = isMotionReduced(settings),
        .textScale = textScaleOf(settings),
        .fontFamily = fontFamily(text(value(settings, kInterface, "font-name"_L1))),
        .fixedFontFamily = fontFamily(text(value(settings, kInterface, "monospace-font-name"_L1))),
    };
    return joined(said, themeWishes(text(value(settings, kInterface, "gtk-theme"_L1))));
}

} // namespace orvella
