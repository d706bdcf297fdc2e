#include "ui/Money.h"

#include "support/Corpus.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

class MoneyCorpusTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void preciseDescriptionsReadAsInTheTable_data()
    {
        QTest::addColumn<double>("cents");
        QTest::addColumn<QString>("text");

        const auto table = Corpus::json(u"money/posix-texts.json"_s);
        for (const auto& row : *Corpus::member(table, u"rows"_s).array()) {
            const auto exact = Corpus::text(row, u"cents_hex"_s).toLatin1();
            QTest::newRow(qUtf8Printable(Corpus::text(row, u"cents"_s)))
                << std::strtod(exact.constData(), nullptr) << Corpus::text(row, u"description_text"_s);
        }
    }

    void preciseDescriptionsReadAsInTheTable()
    {
        QFETCH(double, cents);
        QFETCH(QString, text);

        QCOMPARE(Money::preciseDescription(cents), text);
    }
};

QTEST_GUILESS_MAIN(MoneyCorpusTest)

#include "MoneyCorpusTest.moc"
