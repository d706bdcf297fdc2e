#include "platform/linux/item/SymbolicIcon.h"
#include "base/ApplicationId.h"
#include "platform/linux/item/TrayGlyph.h"

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

#include <cstdlib>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const QString kIcons = QStringLiteral(ORVELLA_ICONS);

/// The icon that is installed, as the library draws it that most panels use.
QImage drawnByAPanel(int pixels)
{
    const auto file = u"%1/hicolor/symbolic/apps/%2-symbolic.svg"_s.arg(kIcons, kApplicationId);
    QProcess renderer;
    renderer.start(u"rsvg-convert"_s, {u"--width"_s, QString::number(pixels), file});
    if (!renderer.waitForFinished())
        return {};
    return QImage::fromData(renderer.readAllStandardOutput()).convertToFormat(QImage::Format_ARGB32);
}

} // namespace

class SymbolicIconTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void theProgramsIconIsFoundWhereItIsInstalled()
    {
        QCOMPARE(symbolicIconName({u"/nonexistent"_s, kIcons}, kApplicationId), u"io.orvella.Orvella-symbolic"_s);
    }

    void anIconThatIsNotInstalledHasNoName()
    {
        QCOMPARE(symbolicIconName({}, kApplicationId), QString());
        QCOMPARE(symbolicIconName({u"/nonexistent"_s}, kApplicationId), QString());
        QCOMPARE(symbolicIconName({kIcons}, u"org.example.other"_s), QString());
    }

    void aFolderInItsPlaceIsNoIcon()
    {
        const QTemporaryDir icons;
        QVERIFY(QDir(icons.path()).mkpath(u"hicolor/symbolic/apps/%1-symbolic.svg"_s.arg(kApplicationId)));

        QCOMPARE(symbolicIconName({icons.path()}, kApplicationId), QString());
    }

    void itIsTheDollarThatTheProgramDraws()
    {
        const auto expected =
            drawTrayGlyph(TrayGlyph::dollar, 16, QColor(0x80, 0x80, 0x80)).convertToFormat(QImage::Format_ARGB32);

        const auto actual = drawnByAPanel(16);

        QCOMPARE(actual.size(), expected.size());
        for (int y = 0; y < expected.height(); ++y)
            for (int x = 0; x < expected.width(); ++x) {
                // The two renderers smooth edges in ways of their own.
                const auto difference = std::abs(qAlpha(actual.pixel(x, y)) - qAlpha(expected.pixel(x, y)));
                QVERIFY2(difference <= 24, qPrintable(u"%1 at %2,%3"_s.arg(difference).arg(x).arg(y)));
            }
    }

    void whereNoPanelColoursItTheGreyShowsOnAnyPanel()
    {
        const auto icon = drawnByAPanel(32);

        QCOMPARE(QColor(icon.pixel(16, 8)), QColor(0x80, 0x80, 0x80));
    }
};

QTEST_GUILESS_MAIN(SymbolicIconTest)

#include "SymbolicIconTest.moc"
