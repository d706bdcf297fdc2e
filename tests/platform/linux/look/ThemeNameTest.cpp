#include "platform/linux/look/ThemeName.h"

#include <QTest>

using namespace orvella;
using namespace Qt::StringLiterals;

class ThemeNameTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aNameTellsTheScheme_data()
    {
        using enum DesktopLook::Scheme;
        QTest::addColumn<QString>("name");
        QTest::addColumn<DesktopLook::Scheme>("scheme");

        const auto row = [](const QString& name, DesktopLook::Scheme scheme) {
            QTest::newRow(qPrintable(name.isEmpty() ? u"no name"_s : name)) << name << scheme;
        };
        row(u"Adwaita-dark"_s, dark);
        row(u"Breeze-Dark"_s, dark);
        row(u"Greybird-dark"_s, dark);
        row(u"Mint-Y-Dark-Aqua"_s, dark);
        row(u"Yaru-blue-dark"_s, dark);
        row(u"Arc-Dark"_s, dark);
        row(u"HighContrastInverse"_s, dark);
        row(u"Arc-Darker"_s, unknown);
        row(u"Materia-light"_s, light);
        row(u"Orchis-Light-Compact"_s, light);
        row(u"Lightning"_s, unknown);
        row(u"Adwaita"_s, unknown);
        row(u"HighContrast"_s, unknown);
        row(u""_s, unknown);
    }

    void aNameTellsTheScheme()
    {
        QFETCH(const QString, name);
        QTEST(themeWishes(name).scheme, "scheme");
    }

    void aNameTellsOfHighContrast_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<bool>("isHighContrast");
        QTest::newRow("GNOME") << u"HighContrast"_s << true;
        QTest::newRow("GNOME, inverse") << u"HighContrastInverse"_s << true;
        QTest::newRow("MATE") << u"ContrastHigh"_s << true;
        QTest::newRow("with a hyphen") << u"Some-high-contrast"_s << true;
        QTest::newRow("low contrast") << u"LowContrast"_s << false;
        QTest::newRow("another") << u"Adwaita-dark"_s << false;
        QTest::newRow("none") << u""_s << false;
    }

    void aNameTellsOfHighContrast()
    {
        QFETCH(const QString, name);
        QTEST(themeWishes(name).isHighContrast, "isHighContrast");
    }

    void aNameTellsNothingElse()
    {
        const auto wishes = themeWishes(u"HighContrastInverse"_s);

        QVERIFY(!wishes.isMotionReduced);
        QCOMPARE(wishes.textScale, 1.0);
    }
};

QTEST_GUILESS_MAIN(ThemeNameTest)

#include "ThemeNameTest.moc"
