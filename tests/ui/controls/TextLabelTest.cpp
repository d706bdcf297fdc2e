#include "ui/controls/TextLabel.h"

#include "support/FakePlatform.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QImage>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString kLong = u"A sentence that is much too long for the little room that it has here on one line."_s;

struct World {
    FakeLook desktop;
    Look look {desktop};

    [[nodiscard]] std::unique_ptr<TextLabel> label(const QString& text, TextLabel::Lines lines = TextLabel::Lines::one)
    {
        auto result = std::make_unique<TextLabel>(look, TypeStyle::callout, Tone::primary, lines);
        result->setText(text);
        return result;
    }
};

QImage picture(QWidget& widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32);
    image.fill(Qt::white);
    widget.render(&image);
    return image;
}

/// Whether anything is drawn in this part.
bool hasInk(const QImage& image, const QRect& part)
{
    for (int y = part.top(); y <= part.bottom(); ++y) {
        for (int x = part.left(); x <= part.right(); ++x) {
            if (qGray(image.pixel(x, y)) < 128)
                return true;
        }
    }
    return false;
}

} // namespace

class TextLabelTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aLineIsAsHighAsItsStyleWhateverTheFont()
    {
        World world;

        QCOMPARE(world.label(u"Text"_s)->sizeHint().height(), 15);
        QCOMPARE(world.label(QString())->sizeHint().height(), 15);
    }

    void itIsAsHighAsItsLines()
    {
        World world;

        QCOMPARE(world.label(u"Short"_s, TextLabel::Lines::all)->heightForWidth(200), 15);
        QVERIFY(world.label(kLong, TextLabel::Lines::all)->heightForWidth(200) >= 3 * 15);
        QCOMPARE(world.label(kLong + kLong, TextLabel::Lines::two)->heightForWidth(200), 2 * 15);
        QCOMPARE(world.label(kLong + kLong, TextLabel::Lines::three)->heightForWidth(200), 3 * 15);
    }

    void everyLineIsDrawn()
    {
        World world;
        const auto label = world.label(kLong, TextLabel::Lines::all);
        label->resize(200, label->heightForWidth(200));

        const auto image = picture(*label);

        for (int line = 0; line < label->height() / 15; ++line)
            QVERIFY2(hasInk(image, {0, line * 15, 200, 15}), qPrintable(QString::number(line)));
    }

    void anAddressBreaksAnywhere()
    {
        World world;
        const auto label = world.label(u"https://example.com/"_s + QString(200, u'x'), TextLabel::Lines::two);
        label->setBreaksAnywhere();

        QCOMPARE(label->heightForWidth(200), 2 * 15);
    }

    void markupIsShownAsItStands()
    {
        World world;
        const auto label = world.label(u"<b>bold</b> &amp; &x"_s);
        const auto plain = QFontMetricsF(world.look.font(TypeStyle::callout)).horizontalAdvance(label->text());

        QCOMPARE(label->textFormat(), Qt::PlainText);
        QCOMPARE(label->sizeHint().width(), static_cast<int>(std::ceil(plain)));
    }

    void itKeepsToTheLeadingEdge()
    {
        World world;
        const auto label = world.label(u"Edge"_s);
        label->resize(300, 15);
        QVERIFY(hasInk(picture(*label), {0, 0, 40, 15}));
        QVERIFY(!hasInk(picture(*label), {100, 0, 200, 15}));

        label->setLayoutDirection(Qt::RightToLeft);

        QVERIFY(!hasInk(picture(*label), {0, 0, 200, 15}));
        QVERIFY(hasInk(picture(*label), {260, 0, 40, 15}));
    }

    void whatIsReadOutIsTheWholeText()
    {
        World world;
        const auto label = world.label(kLong);
        label->resize(50, 15);

        const auto* const accessible = QAccessible::queryAccessibleInterface(label.get());

        QCOMPARE(accessible->text(QAccessible::Name), kLong);
        QCOMPARE(accessible->role(), QAccessible::StaticText);
    }

    void itGrowsWithTheTextOfTheDesktop()
    {
        World world;
        const auto label = world.label(u"Text"_s);
        const auto before = label->sizeHint();

        world.desktop.scale = 2;
        world.desktop.changed();

        QCOMPARE(label->sizeHint().height(), 30);
        QVERIFY(label->sizeHint().width() > before.width());
    }
};

QTEST_MAIN(TextLabelTest)

#include "TextLabelTest.moc"
