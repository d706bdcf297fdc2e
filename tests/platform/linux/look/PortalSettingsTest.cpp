#include "platform/linux/look/PortalSettings.h"

#include <QDBusVariant>
#include <QTest>

#include <limits>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const auto kAppearance = u"org.freedesktop.appearance"_s;
const auto kInterface = u"org.gnome.desktop.interface"_s;
const auto kAccessibility = u"org.gnome.desktop.a11y.interface"_s;
const auto kPlasma = u"org.kde.kdeglobals.KDE"_s;

QVariant wrapped(const QVariant& value)
{
    return QVariant::fromValue(QDBusVariant(value));
}

} // namespace

Q_DECLARE_METATYPE(orvella::PortalSettings)

class PortalSettingsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theSchemeIsTheOneThatIsWishedFor_data()
    {
        using enum DesktopLook::Scheme;
        QTest::addColumn<PortalSettings>("settings");
        QTest::addColumn<DesktopLook::Scheme>("scheme");

        const auto row = [](const char* name, const PortalSettings& settings, DesktopLook::Scheme scheme) {
            QTest::newRow(name) << settings << scheme;
        };
        const auto general = [](const QVariant& value) {
            return PortalSettings {{kAppearance, {{u"color-scheme"_s, value}}}};
        };
        const auto gnome = [](const QVariant& value) {
            return PortalSettings {{kInterface, {{u"color-scheme"_s, value}}}};
        };
        row("nothing", {}, unknown);
        row("no preference", general(0U), unknown);
        row("dark", general(1U), dark);
        row("light", general(2U), light);
        row("a number of the future", general(3U), unknown);
        row("a value wrapped twice", general(wrapped(wrapped(1U))), dark);
        row("a number with a sign", general(1), unknown);
        row("a text", general(u"1"_s), unknown);
        row("GNOME's default", gnome(u"default"_s), unknown);
        row("GNOME's dark", gnome(u"prefer-dark"_s), dark);
        row("GNOME's light", gnome(u"prefer-light"_s), light);
        row("a number from GNOME", gnome(1U), unknown);
        row("a dark theme", {{kInterface, {{u"gtk-theme"_s, u"Yaru-dark"_s}}}}, dark);
        row("a theme that tells nothing", {{kInterface, {{u"gtk-theme"_s, u"Yaru"_s}}}}, unknown);
        row("the general one before GNOME's",
            {{kAppearance, {{u"color-scheme"_s, 2U}}}, {kInterface, {{u"color-scheme"_s, u"prefer-dark"_s}}}}, light);
        row("GNOME's where the general one has no preference",
            {{kAppearance, {{u"color-scheme"_s, 0U}}}, {kInterface, {{u"color-scheme"_s, u"prefer-dark"_s}}}}, dark);
        row("the scheme before the theme",
            {{kInterface, {{u"color-scheme"_s, u"prefer-light"_s}, {u"gtk-theme"_s, u"Yaru-dark"_s}}}}, light);
    }

    void theSchemeIsTheOneThatIsWishedFor()
    {
        QFETCH(const PortalSettings, settings);
        QTEST(portalWishes(settings).scheme, "scheme");
    }

    void oneWishForHighContrastIsEnough_data()
    {
        QTest::addColumn<PortalSettings>("settings");
        QTest::addColumn<bool>("expected");
        const auto row = [](const char* name, const QString& group, const QString& key, const QVariant& value,
                             bool expected) {
            QTest::newRow(name) << PortalSettings {{group, {{key, value}}}} << expected;
        };
        row("general", kAppearance, u"contrast"_s, 1U, true);
        row("no preference", kAppearance, u"contrast"_s, 0U, false);
        row("a truth value", kAppearance, u"contrast"_s, true, false);
        row("GNOME's", kAccessibility, u"high-contrast"_s, true, true);
        row("GNOME's default", kAccessibility, u"high-contrast"_s, false, false);
        row("a text", kAccessibility, u"high-contrast"_s, u"true"_s, false);
        row("a theme", kInterface, u"gtk-theme"_s, u"HighContrast"_s, true);
        row("another theme", kInterface, u"gtk-theme"_s, u"Adwaita"_s, false);
    }

    void oneWishForHighContrastIsEnough()
    {
        QFETCH(const PortalSettings, settings);
        QTEST(portalWishes(settings).isHighContrast, "expected");
    }

    void oneWishForLessMotionIsEnough_data()
    {
        QTest::addColumn<PortalSettings>("settings");
        QTest::addColumn<bool>("expected");
        const auto row = [](const char* name, const QString& group, const QString& key, const QVariant& value,
                             bool expected) {
            QTest::newRow(name) << PortalSettings {{group, {{key, value}}}} << expected;
        };
        row("general", kAppearance, u"reduced-motion"_s, 1U, true);
        row("no preference", kAppearance, u"reduced-motion"_s, 0U, false);
        row("GNOME without animations", kInterface, u"enable-animations"_s, false, true);
        row("GNOME with animations", kInterface, u"enable-animations"_s, true, false);
        row("a number", kInterface, u"enable-animations"_s, 0, false);
        row("Plasma without animations", kPlasma, u"AnimationDurationFactor"_s, u"0"_s, true);
        row("Plasma without animations, as a number", kPlasma, u"AnimationDurationFactor"_s, 0.0, true);
        row("Plasma with quick animations", kPlasma, u"AnimationDurationFactor"_s, u"0.25"_s, false);
        row("a text that is no number", kPlasma, u"AnimationDurationFactor"_s, u"none"_s, false);
        row("an empty text", kPlasma, u"AnimationDurationFactor"_s, u""_s, false);
        row("a truth value", kPlasma, u"AnimationDurationFactor"_s, false, false);
    }

    void oneWishForLessMotionIsEnough()
    {
        QFETCH(const PortalSettings, settings);
        QTEST(portalWishes(settings).isMotionReduced, "expected");
    }

    void textIsAsLargeAsItIsWishedFor_data()
    {
        QTest::addColumn<QVariant>("factor");
        QTest::addColumn<double>("expected");
        QTest::newRow("larger") << QVariant(1.25) << 1.25;
        QTest::newRow("smaller") << QVariant(0.8) << 0.8;
        QTest::newRow("none at all") << QVariant(0.0) << 1.0;
        QTest::newRow("less than none") << QVariant(-2.0) << 1.0;
        QTest::newRow("infinite") << QVariant(std::numeric_limits<double>::infinity()) << 1.0;
        QTest::newRow("no number") << QVariant(std::numeric_limits<double>::quiet_NaN()) << 1.0;
        QTest::newRow("a text") << QVariant(u"2"_s) << 1.0;
        QTest::newRow("not said") << QVariant() << 1.0;
    }

    void textIsAsLargeAsItIsWishedFor()
    {
        QFETCH(const QVariant, factor);

        const auto wishes = portalWishes({{kInterface, {{u"text-scaling-factor"_s, factor}}}});

        QTEST(wishes.textScale, "expected");
    }

    void theFontsAreThoseOfTheInterface()
    {
        const auto wishes = portalWishes(
            {{kInterface, {{u"font-name"_s, u"Cantarell 11"_s}, {u"monospace-font-name"_s, u"Source Code Pro 10"_s}}}});

        QCOMPARE(wishes.fontFamily, u"Cantarell"_s);
        QCOMPARE(wishes.fixedFontFamily, u"Source Code Pro"_s);
    }

    void aGroupThatIsNotAskedForSaysNothing()
    {
        for (const auto& group : {kAppearance, kInterface, kAccessibility, kPlasma})
            QVERIFY(lookNamespaces().contains(group));
        QCOMPARE(lookNamespaces().size(), 4);

        QCOMPARE(portalWishes({{u"org.example"_s, {{u"color-scheme"_s, 1U}}}}), LookWishes());
    }
};

QTEST_GUILESS_MAIN(PortalSettingsTest)

#include "PortalSettingsTest.moc"
