#include "ui/look/Theme.h"

#include <QPalette>
#include <QTest>

#include <cmath>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

double linear(float channel)
{
    const double value = channel;
    return value <= 0.04045 ? value / 12.92 : std::pow((value + 0.055) / 1.055, 2.4);
}

double luminance(const QColor& colour)
{
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) + 0.0722 * linear(colour.blueF());
}

/// https://www.w3.org/TR/WCAG22/#dfn-contrast-ratio
double contrast(const QColor& one, const QColor& other)
{
    const auto [darker, lighter] = std::minmax(luminance(one), luminance(other));
    return (lighter + 0.05) / (darker + 0.05);
}

} // namespace

class ThemeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyTextCanBeRead_data()
    {
        QTest::addColumn<Theme>("theme");
        QTest::newRow("light") << Theme::light();
        QTest::newRow("dark") << Theme::dark();
    }

    void everyTextCanBeRead()
    {
        constexpr double kText = 4.5;
        constexpr double kShape = 3;
        QFETCH(const Theme, theme);

        for (const auto& ground : {theme.surface, theme.window, theme.card}) {
            for (const auto& text : {theme.text, theme.secondaryText, theme.ink, theme.green, theme.red})
                QVERIFY2(contrast(text, ground) >= kText, qPrintable(text.name() + u" on "_s + ground.name()));
        }
        for (const auto& ground : {theme.surface, theme.window}) {
            QVERIFY(contrast(theme.disabledText, ground) >= kText);
            QVERIFY(contrast(theme.controlOff, ground) >= kShape);
        }
        for (const auto& face : {theme.accent, theme.accentHovered, theme.accentPressed})
            QVERIFY2(contrast(theme.onAccent, face) >= kText, qPrintable(face.name()));
        for (const auto& face : {theme.button, theme.buttonHovered, theme.buttonPressed})
            QVERIFY2(contrast(theme.text, face) >= kText, qPrintable(face.name()));
    }

    void highContrastTakesTheDesktopsOwnColours()
    {
        QPalette palette;
        palette.setColor(QPalette::Window, Qt::black);
        palette.setColor(QPalette::WindowText, Qt::yellow);
        palette.setColor(QPalette::Highlight, Qt::cyan);
        palette.setColor(QPalette::HighlightedText, Qt::black);

        const auto theme = Theme::highContrast(palette);

        QVERIFY(theme.isDark);
        QCOMPARE(theme.surface, QColor(Qt::black));
        QCOMPARE(theme.window, QColor(Qt::black));
        for (const auto& text : {theme.text, theme.secondaryText, theme.red, theme.green, theme.controlOff})
            QCOMPARE(text, QColor(Qt::yellow));
        QCOMPARE(theme.accent, QColor(Qt::cyan));
        QCOMPARE(theme.onAccent, QColor(Qt::black));
    }
};

QTEST_GUILESS_MAIN(ThemeTest)

#include "ThemeTest.moc"
