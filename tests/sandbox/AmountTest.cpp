#include "sandbox/Amount.h"

#include <QTest>

#include <cmath>
#include <limits>

using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;

class AmountTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void fractionsOfACentAreReadExactly_data()
    {
        QTest::addColumn<double>("cents");
        QTest::addColumn<std::optional<qint64>>("expected");

        const auto row = [](const char* name, double cents, std::optional<qint64> expected) {
            QTest::newRow(name) << cents << expected;
        };
        row("nothing", 0, 0);
        row("one millionth", 0.000001, 1);
        row("a tenth", 0.1, 100'000);
        row("no double of its own", 2.1, 2'100'000);
        row("a third, cut", 1.333333, 1'333'333);
        row("the greatest", 9007199254.740992, 9'007'199'254'740'992);
        row("seven decimals", 0.0000001, std::nullopt);
        row("seven decimals after a cent", 1.0000001, std::nullopt);
        row("a third", 1.0 / 3, std::nullopt);
        row("negative", -0.1, std::nullopt);
        row("too large", 1e10, std::nullopt);
        row("infinite", std::numeric_limits<double>::infinity(), std::nullopt);
        row("no number", std::nan(""), std::nullopt);
    }

    void fractionsOfACentAreReadExactly()
    {
        QFETCH(double, cents);
        QFETCH(std::optional<qint64>, expected);

        const auto amount = Amount::ofExactCents(cents);

        QCOMPARE(amount.has_value(), expected.has_value());
        if (amount)
            QCOMPARE(amount->microCents(), *expected);
    }

    void whatIsReadIsToldAgainAsTheSameDouble()
    {
        for (const auto cents : {0.0, 0.000001, 0.1, 2.1, 8.4, 1.333333, 12.0, 89999999.999999}) {
            const auto amount = Amount::ofExactCents(cents);
            QVERIFY(amount);
            QCOMPARE(amount->exactCents(), cents);
        }
    }

    void wholeCentsAreRoundedDown()
    {
        QCOMPARE(Amount::ofMicroCents(1'999'999).wholeCents(), 1);
        QCOMPARE(Amount::ofMicroCents(2'000'000).wholeCents(), 2);
        QCOMPARE(Amount::ofMicroCents(999'999).wholeCents(), 0);
    }

    void aThousandTenthsAreAHundredCentsToTheLastDigit()
    {
        Amount sum;
        for (int view = 0; view < 1000; ++view)
            sum = sum + *Amount::ofExactCents(0.1);

        QVERIFY(sum == Amount::ofCents(100));
        QCOMPARE(sum.dollars(), u"$1.00"_s);
    }

    void dollarsShowEveryDigitThatCounts_data()
    {
        QTest::addColumn<qint64>("microCents");
        QTest::addColumn<QString>("expected");

        QTest::newRow("nothing") << qint64 {0} << u"$0.00"_s;
        QTest::newRow("one cent") << qint64 {1'000'000} << u"$0.01"_s;
        QTest::newRow("ten cents") << qint64 {10'000'000} << u"$0.10"_s;
        QTest::newRow("a dollar") << qint64 {100'000'000} << u"$1.00"_s;
        QTest::newRow("a tenth of a cent") << qint64 {100'000} << u"$0.001"_s;
        QTest::newRow("one millionth of a cent") << qint64 {1} << u"$0.00000001"_s;
        QTest::newRow("dollars and a fraction") << qint64 {1'201'750'000} << u"$12.0175"_s;
        QTest::newRow("negative") << qint64 {-1'201'750'000} << u"-$12.0175"_s;
        QTest::newRow("the least") << std::numeric_limits<qint64>::min() << u"-$92233720368.54775808"_s;
    }

    void dollarsShowEveryDigitThatCounts()
    {
        QFETCH(qint64, microCents);
        QFETCH(QString, expected);

        QCOMPARE(Amount::ofMicroCents(microCents).dollars(), expected);
    }
};

QTEST_GUILESS_MAIN(AmountTest)

#include "AmountTest.moc"
