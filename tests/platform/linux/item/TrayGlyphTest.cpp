#include "platform/linux/item/TrayGlyph.h"

#include <QTest>

using namespace orvella;
using namespace Qt::StringLiterals;

namespace {

const QColor kInk(0x12, 0x34, 0x56);
constexpr int kInked = 96;

QImage drawn(TrayGlyph glyph, int pixels)
{
    return drawTrayGlyph(glyph, pixels, kInk).convertToFormat(QImage::Format_ARGB32);
}

/// The pixels with a good part of ink as X, the others as blanks.
QStringList map(const QImage& image)
{
    QStringList lines;
    for (int y = 0; y < image.height(); ++y) {
        QString line;
        for (int x = 0; x < image.width(); ++x)
            line += qAlpha(image.pixel(x, y)) >= kInked ? u'X' : u' ';
        lines.append(line);
    }
    return lines;
}

/// The smallest rectangle with all the ink.
QRect inked(const QImage& image)
{
    QRect result;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (qAlpha(image.pixel(x, y)) > 0)
                result |= QRect(x, y, 1, 1);
    return result;
}

void compareLines(const QStringList& actual, const QStringList& expected)
{
    QCOMPARE(actual.join(u'\n'), expected.join(u'\n'));
}

} // namespace

class TrayGlyphTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void theSmallestDollarIsOneStrokeWithTwoNubs()
    {
        compareLines(map(drawn(TrayGlyph::dollar, 16)),
            {
                u"                "_s,
                u"       XX       "_s,
                u"       XX       "_s,
                u"    XXXXXXXX    "_s,
                u"   XXXXXXXXXX   "_s,
                u"   XX      XX   "_s,
                u"   XX           "_s,
                u"   XXXXXXXXX    "_s,
                u"    XXXXXXXXX   "_s,
                u"           XX   "_s,
                u"   XX      XX   "_s,
                u"   XXXXXXXXXX   "_s,
                u"    XXXXXXXX    "_s,
                u"       XX       "_s,
                u"       XX       "_s,
                u"                "_s,
            });
    }

    void theSmallestWordIsSetPixelByPixel()
    {
        compareLines(map(drawn(TrayGlyph::dollarAd, 16)),
            {
                u"                "_s,
                u"  X             "_s,
                u"  X             "_s,
                u" XXX   XX  XXXX "_s,
                u"X X X X  X X   X"_s,
                u"X X   X  X X   X"_s,
                u"X X   X  X X   X"_s,
                u" XX   X  X X   X"_s,
                u"  XX  XXXX X   X"_s,
                u"  X X X  X X   X"_s,
                u"  X X X  X X   X"_s,
                u"X X X X  X X   X"_s,
                u" XXX  X  X XXXX "_s,
                u"  X             "_s,
                u"  X             "_s,
                u"                "_s,
            });
    }

    void theWordAt22PixelsHasADollarAnAAndAD()
    {
        compareLines(map(drawn(TrayGlyph::dollarAd, 22)),
            {
                u"                      "_s,
                u"                      "_s,
                u"   XX                 "_s,
                u"   XX                 "_s,
                u"  XXXX    XXXX  XXXX  "_s,
                u" XXXXXX  XXXXXX XXXXX "_s,
                u"XXX  XXX XX  XX XX XXX"_s,
                u"XX    XX XX  XX XX  XX"_s,
                u"XX       XX  XX XX  XX"_s,
                u"XXX      XX  XX XX  XX"_s,
                u" XXXXX   XX  XX XX  XX"_s,
                u"  XXXXX  XXXXXX XX  XX"_s,
                u"     XXX XXXXXX XX  XX"_s,
                u"      XX XX  XX XX  XX"_s,
                u"XX    XX XX  XX XX  XX"_s,
                u"XXX  XXX XX  XX XX XXX"_s,
                u" XXXXXX  XX  XX XXXXX "_s,
                u"  XXXX   XX  XX XXXX  "_s,
                u"   XX                 "_s,
                u"   XX                 "_s,
                u"                      "_s,
                u"                      "_s,
            });
    }

    void eachGlyphFillsItsBox_data()
    {
        QTest::addColumn<int>("pixels");
        QTest::addColumn<QRect>("dollar");
        QTest::addColumn<QRect>("word");
        QTest::newRow("16") << 16 << QRect(3, 1, 10, 14) << QRect(0, 1, 16, 14);
        QTest::newRow("22") << 22 << QRect(4, 1, 13, 19) << QRect(0, 2, 22, 18);
        QTest::newRow("24") << 24 << QRect(5, 1, 13, 21) << QRect(0, 2, 24, 20);
        QTest::newRow("32") << 32 << QRect(6, 2, 20, 28) << QRect(0, 2, 32, 28);
        QTest::newRow("44, twice 22") << 44 << QRect(8, 2, 26, 38) << QRect(0, 4, 44, 36);
        QTest::newRow("48, twice 24") << 48 << QRect(10, 2, 26, 42) << QRect(0, 4, 48, 40);
        QTest::newRow("64, twice 32") << 64 << QRect(12, 4, 40, 56) << QRect(0, 4, 64, 56);
        QTest::newRow("26, 24 in the middle") << 26 << QRect(6, 2, 13, 21) << QRect(1, 3, 24, 20);
    }

    void eachGlyphFillsItsBox()
    {
        QFETCH(const int, pixels);
        QFETCH(const QRect, dollar);
        QFETCH(const QRect, word);

        QCOMPARE(drawn(TrayGlyph::dollar, pixels).size(), QSize(pixels, pixels));
        QCOMPARE(inked(drawn(TrayGlyph::dollar, pixels)), dollar);
        QCOMPARE(inked(drawn(TrayGlyph::dollarAd, pixels)), word);
    }

    void allInkHasTheColourAskedFor()
    {
        for (const auto glyph : {TrayGlyph::dollar, TrayGlyph::dollarAd}) {
            const auto image = drawn(glyph, 32);
            for (int y = 0; y < image.height(); ++y)
                for (int x = 0; x < image.width(); ++x)
                    if (qAlpha(image.pixel(x, y)) == 255)
                        QCOMPARE(QColor(image.pixel(x, y)), kInk);
        }
    }

    void aLargePictureIsDrawnAnewAndNotScaled()
    {
        const auto large = drawn(TrayGlyph::dollar, 44);

        QVERIFY(large != drawn(TrayGlyph::dollar, 22).scaled(44, 44));
    }
};

QTEST_GUILESS_MAIN(TrayGlyphTest)

#include "TrayGlyphTest.moc"
