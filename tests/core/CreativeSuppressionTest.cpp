#include "core/CreativeSuppression.h"
#include "support/FakeClock.h"

#include <QElapsedTimer>
#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

class CreativeSuppressionTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void creativeIsHiddenAfter299Seconds()
    {
        FakeClock clock;
        CreativeSuppression suppression(clock);
        suppression.suppress(u"a"_s);

        clock.advance(299s);

        QVERIFY(suppression.isSuppressed(u"a"_s));
    }

    void creativeIsHiddenAMomentBefore300Seconds()
    {
        FakeClock clock;
        CreativeSuppression suppression(clock);
        suppression.suppress(u"a"_s);

        clock.advance(300s - 1ns);

        QVERIFY(suppression.isSuppressed(u"a"_s));
    }

    void creativeIsOfferedAgainAfter300Seconds()
    {
        FakeClock clock;
        CreativeSuppression suppression(clock);
        suppression.suppress(u"a"_s);

        clock.advance(300s);

        QVERIFY(!suppression.isSuppressed(u"a"_s));
    }

    void anotherSuppressionStartsTheRestAnew()
    {
        FakeClock clock;
        CreativeSuppression suppression(clock);
        suppression.suppress(u"a"_s);
        clock.advance(200s);

        suppression.suppress(u"a"_s);
        clock.advance(200s);

        QVERIFY(suppression.isSuppressed(u"a"_s));
    }

    void anotherCreativeIsNotHidden()
    {
        FakeClock clock;
        CreativeSuppression suppression(clock);

        suppression.suppress(u"a"_s);

        QVERIFY(!suppression.isSuppressed(u"b"_s));
    }

    void creativesThatHaveRestedAreForgotten_data()
    {
        QTest::addColumn<bool>("byAsking");
        QTest::newRow("when asked") << true;
        QTest::newRow("when another is suppressed") << false;
    }

    void creativesThatHaveRestedAreForgotten()
    {
        QFETCH(bool, byAsking);
        FakeClock clock;
        CreativeSuppression suppression(clock);
        suppression.suppress(u"a"_s);
        suppression.suppress(u"b"_s);
        clock.advance(300s);
        QCOMPARE(suppression.count(), 2);

        if (byAsking)
            QVERIFY(!suppression.isSuppressed(u"c"_s));
        else
            suppression.suppress(u"c"_s);

        QCOMPARE(suppression.count(), byAsking ? 0 : 1);
    }

    void creativeThatRestsAnewIsForgottenOnce()
    {
        FakeClock clock;
        CreativeSuppression suppression(clock);
        suppression.suppress(u"a"_s);
        clock.advance(200s);
        suppression.suppress(u"a"_s);

        clock.advance(299s);
        QVERIFY(suppression.isSuppressed(u"a"_s));
        QCOMPARE(suppression.count(), 1);

        clock.advance(1s);
        QVERIFY(!suppression.isSuppressed(u"a"_s));
        QCOMPARE(suppression.count(), 0);
    }

    /// Looking through all that rest for each of them would take minutes.
    void aHundredThousandCreativesAreSuppressedInSeconds()
    {
        constexpr int kCreatives = 100'000;
        FakeClock clock;
        CreativeSuppression suppression(clock);
        QElapsedTimer time;
        time.start();

        for (int number = 0; number < kCreatives; ++number) {
            suppression.suppress(QString::number(number));
            QVERIFY2(time.elapsed() < 20'000, qPrintable(u"Only %1 are suppressed."_s.arg(number)));
        }

        QCOMPARE(suppression.count(), kCreatives);
    }
};

QTEST_GUILESS_MAIN(CreativeSuppressionTest)

#include "CreativeSuppressionTest.moc"
