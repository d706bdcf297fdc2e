#include "platform/linux/item/PanelTone.h"
#include "platform/linux/item/PanelToneWatch.h"
#include "support/Contrast.h"

#include <QGuiApplication>
#include <QPalette>
#include <QSignalSpy>
#include <QTest>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

void setWindowColour(const QColor& colour)
{
    QPalette palette = QGuiApplication::palette();
    palette.setColor(QPalette::Window, colour);
    QGuiApplication::setPalette(palette);
}

} // namespace

class PanelToneTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init() { qunsetenv("XDG_CURRENT_DESKTOP"); }

    void gnomesBarIsDarkUnderLightApplicationsToo()
    {
        QCOMPARE(panelTone({u"GNOME"_s}, QColor(Qt::white)), PanelTone::dark);
        QCOMPARE(panelTone({u"ubuntu"_s, u"GNOME"_s}, QColor(Qt::white)), PanelTone::dark);
        QCOMPARE(panelTone({u"GNOME"_s}, std::nullopt), PanelTone::dark);
    }

    void otherPanelsFollowTheWindowColour()
    {
        QCOMPARE(panelTone({u"XFCE"_s}, QColor(0xF6, 0xF5, 0xF4)), PanelTone::light);
        QCOMPARE(panelTone({u"KDE"_s}, QColor(0x31, 0x36, 0x3B)), PanelTone::dark);
        QCOMPARE(panelTone({}, QColor(Qt::black)), PanelTone::dark);
    }

    void aColourBelowHalfIsDarkAndOneFromHalfOnIsLight()
    {
        QCOMPARE(panelTone({u"XFCE"_s}, QColor(127, 127, 127)), PanelTone::dark);
        QCOMPARE(panelTone({u"XFCE"_s}, QColor(128, 128, 128)), PanelTone::light);
    }

    void withoutAWindowColourTheToneIsUnknown()
    {
        QCOMPARE(panelTone({u"XFCE"_s}, std::nullopt), PanelTone::unknown);
        QCOMPARE(panelTone({}, std::nullopt), PanelTone::unknown);
    }

    void theColoursKeepTheirContrast_data()
    {
        QTest::addColumn<PanelTone>("panel");
        QTest::addColumn<QColor>("background");
        QTest::addColumn<double>("least");
        QTest::newRow("dark") << PanelTone::dark << QColor(0x1D, 0x1E, 0x21) << 4.5;
        QTest::newRow("light") << PanelTone::light << QColor(0xF2, 0xF3, 0xF5) << 4.5;
        QTest::newRow("unknown on dark") << PanelTone::unknown << QColor(0x1D, 0x1E, 0x21) << 3.0;
        QTest::newRow("unknown on light") << PanelTone::unknown << QColor(0xF2, 0xF3, 0xF5) << 3.0;
    }

    void theColoursKeepTheirContrast()
    {
        QFETCH(const PanelTone, panel);
        QFETCH(const QColor, background);
        QFETCH(const double, least);

        QVERIFY(contrast(statusColour(StatusAppearance::Tone::label, panel), background) >= least);
        QVERIFY(contrast(statusColour(StatusAppearance::Tone::green, panel), background) >= least);
    }

    void theToolkitsOwnPaletteSaysNothingAboutThePanel()
    {
        setWindowColour(QColor(0xEF, 0xEF, 0xEF));

        const PanelToneWatch watch;

        QCOMPARE(watch.tone(), PanelTone::unknown);
    }

    void aChangeOfThePaletteIsFollowedWhileTheProgramRuns()
    {
        setWindowColour(Qt::white);
        PanelToneWatch watch;
        QSignalSpy changes(&watch, &PanelToneWatch::changed);
        QCOMPARE(watch.tone(), PanelTone::light);

        setWindowColour(Qt::black);

        QTRY_COMPARE(watch.tone(), PanelTone::dark);
        QCOMPARE(changes.count(), 1);
    }

    void aPaletteOfTheSameToneIsNoChange()
    {
        setWindowColour(Qt::white);
        PanelToneWatch watch;
        QSignalSpy changes(&watch, &PanelToneWatch::changed);

        setWindowColour(QColor(0xF0, 0xE0, 0xD0));
        QCoreApplication::processEvents();

        QCOMPARE(changes.count(), 0);
    }

    void theDesktopsNameIsReadFromTheSession()
    {
        qputenv("XDG_CURRENT_DESKTOP", "ubuntu:GNOME");
        setWindowColour(Qt::white);

        const PanelToneWatch watch;

        QCOMPARE(watch.tone(), PanelTone::dark);
    }
};

QTEST_MAIN(PanelToneTest)

#include "PanelToneTest.moc"
