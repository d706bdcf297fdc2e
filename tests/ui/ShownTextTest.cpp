#include "ui/ShownText.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class ShownTextTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aTextOfAThousandIsShownWhole()
    {
        const QString text(1000, u'x');

        QCOMPARE(shownText(text), text);
    }

    void aLongerOneEndsThere() { QCOMPARE(shownText(QString(1001, u'x')), QString(1000, u'x') + u'…'); }

    void noCharacterIsCutInHalf()
    {
        const QString picture = u"\U0001F4B0"_s;

        QCOMPARE(shownText(u'x' + picture.repeated(500)), u'x' + picture.repeated(499) + u'…');
    }

    void whatTurnsTheDirectionIsLeftOut_data()
    {
        QTest::addColumn<char16_t>("character");
        QTest::addColumn<bool>("isLeftOut");
        const auto row = [](char16_t character, bool isLeftOut) {
            QTest::addRow("U+%04X", character) << character << isLeftOut;
        };
        row(0x0000, true);
        row(0x001b, true);
        row(0x007f, true);
        row(0x009b, true);
        row(0x2029, false);
        row(0x202a, true);
        row(0x202e, true);
        row(0x202f, false);
        row(0x2065, false);
        row(0x2066, true);
        row(0x2069, true);
        row(0x206a, false);
        row('\t', false);
        row('\n', false);
        row(0x200d, false);
        row(0x200f, false);
        row(0x05d0, false);
    }

    void whatTurnsTheDirectionIsLeftOut()
    {
        QFETCH(const char16_t, character);
        QFETCH(const bool, isLeftOut);
        const auto text = u'a' + QString(QChar(character)) + u'b';

        QCOMPARE(shownText(text), isLeftOut ? u"ab"_s : text);
    }
};

QTEST_GUILESS_MAIN(ShownTextTest)

#include "ShownTextTest.moc"
