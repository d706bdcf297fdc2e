#include "base/Clock.h"
#include "support/FakeClock.h"

#include <QCoroTask>
#include <QTest>

#include <vector>

using namespace orvella;
using namespace std::chrono_literals;

namespace {

QCoro::Task<> sleepAndCount(Clock& clock, Clock::duration pause, std::stop_token stop, int& wakings)
{
    co_await clock.sleep(pause, stop);
    ++wakings;
}

} // namespace

class ClockTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void aSleepEndsWhenItsTimeHasPassedAndNotBefore()
    {
        FakeClock clock;
        int wakings = 0;
        sleepAndCount(clock, 60s, {}, wakings);

        clock.advance(60s - 1ns);
        QCOMPARE(wakings, 0);

        clock.advance(1ns);
        QCOMPARE(wakings, 1);
        QCOMPARE(clock.sleepers(), 0U);
    }

    void aStopEndsASleepAtOnceAndOnlyOnce()
    {
        FakeClock clock;
        std::stop_source source;
        int wakings = 0;
        sleepAndCount(clock, 60s, source.get_token(), wakings);

        source.request_stop();

        QCOMPARE(wakings, 1);
        QCOMPARE(clock.sleepers(), 0U);
        clock.advance(120s);
        QCOMPARE(wakings, 1);
    }

    void aSleepUnderAStoppedTokenDoesNotWait()
    {
        FakeClock clock;
        std::stop_source source;
        source.request_stop();
        int wakings = 0;

        sleepAndCount(clock, 60s, source.get_token(), wakings);

        QCOMPARE(wakings, 1);
    }

    void aRealSecondIsNeverShort()
    {
        SystemClock clock;
        int wakings = 0;
        const auto start = clock.now();
        sleepAndCount(clock, 1s, {}, wakings);

        QTRY_COMPARE_WITH_TIMEOUT(wakings, 1, 5000);

        QVERIFY(clock.now() - start >= 1s);
    }

    void aRealSleepCanBeStopped()
    {
        SystemClock clock;
        std::stop_source source;
        int wakings = 0;
        sleepAndCount(clock, 1h, source.get_token(), wakings);

        source.request_stop();

        QCOMPARE(wakings, 1);
    }
};

QTEST_GUILESS_MAIN(ClockTest)

#include "ClockTest.moc"
