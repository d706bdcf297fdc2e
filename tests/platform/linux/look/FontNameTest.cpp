#include "platform/linux/look/FontName.h"

#include <QTest>

using namespace orvella;
using namespace Qt::StringLiterals;

class FontNameTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFamilyIsWhatIsNeitherStyleNorSize_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<QString>("family");
        const auto row = [](const QString& name, const QString& family) {
            QTest::newRow(qPrintable(name)) << name << family;
        };
        row(u"Cantarell 11"_s, u"Cantarell"_s);
        row(u"Noto Sans Bold 10"_s, u"Noto Sans"_s);
        row(u"DejaVu Sans Mono Semi-Bold Italic 9.5"_s, u"DejaVu Sans Mono"_s);
        row(u"Ubuntu"_s, u"Ubuntu"_s);
        row(u"  Fira   Code   12px "_s, u"Fira Code"_s);
        row(u"Source Sans 3, Regular 10"_s, u"Source Sans 3"_s);
        row(u"Ubuntu Condensed, 10"_s, u"Ubuntu Condensed"_s);
        row(u"Noto Sans CJK JP, sans-serif 10"_s, u"Noto Sans CJK JP"_s);
        row(u"Bold 10"_s, QString());
        row(u"10"_s, QString());
        row(u","_s, QString());
        row(QString(), QString());
    }

    void theFamilyIsWhatIsNeitherStyleNorSize()
    {
        QFETCH(const QString, name);

        QTEST(fontFamily(name), "family");
    }
};

QTEST_APPLESS_MAIN(FontNameTest)

#include "FontNameTest.moc"
