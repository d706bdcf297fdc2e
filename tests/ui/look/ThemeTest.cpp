#include "ui/look/Theme.h"

#include "support/Contrast.h"

#include <QPalette>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

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
