#include "base/Clock.h"
#include "support/FakeClock.h"

#include <QCoroTask>
#include <QTest>

#include <vector>

using namespace orvella;
using namespace std::chrono_literals;

namespace {

QCoro::Task<> sleepThroughAndCount(Clock& clock, Clock::duration pause, std::stop_token stop, int& wakings)
{
    co_await clock.sleepThroughSuspension(pause, stop);
    ++wakings;
}

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

    void suspensionDoesNotCountForASleep()
    {
        FakeClock clock;
        int wakings = 0;
        sleepAndCount(clock, 60s, {}, wakings);
        clock.advance(20s);

        clock.suspend(8h);
        clock.advance(40s - 1ns);
        QCOMPARE(wakings, 0);

        clock.advance(1ns);
        QCOMPARE(wakings, 1);
    }

    void suspensionCountsForASleepThroughIt()
    {
        FakeClock clock;
        int wakings = 0;
        sleepThroughAndCount(clock, 60s, {}, wakings);

        clock.suspend(60s - 1ns);
        QCOMPARE(wakings, 0);

        clock.suspend(1ns);
        QCOMPARE(wakings, 1);
    }

    void aMachineThatDoesNotSleepIsNotSuspendedFurther()
    {
        SystemClock clock;
        const auto before = clock.suspended();
        QVERIFY(before >= -1ms);

        QTest::qWait(50);

        QVERIFY(clock.suspended() - before < 10ms);
    }

    void aRealSleepThroughSuspensionIsNeverShort()
    {
        SystemClock clock;
        int wakings = 0;
        const auto start = clock.now();
        sleepThroughAndCount(clock, 200ms, {}, wakings);

        QTRY_COMPARE_WITH_TIMEOUT(wakings, 1, 5000);

        QVERIFY(clock.now() - start >= 200ms);
    }

    void realSleepsThroughSuspensionEndInTheirOrder()
    {
        SystemClock clock;
        std::stop_source source;
        int later = 0;
        int earlier = 0;
        sleepThroughAndCount(clock, 1h, source.get_token(), later);
        sleepThroughAndCount(clock, 50ms, {}, earlier);

        QTRY_COMPARE_WITH_TIMEOUT(earlier, 1, 5000);

        QCOMPARE(later, 0);
        source.request_stop();
    }

    void aRealSleepThroughSuspensionCanBeStopped()
    {
        SystemClock clock;
        std::stop_source source;
        int wakings = 0;
        int others = 0;
        sleepThroughAndCount(clock, 1h, source.get_token(), wakings);
        sleepThroughAndCount(clock, 50ms, {}, others);

        source.request_stop();
        QCOMPARE(wakings, 1);

        QTRY_COMPARE_WITH_TIMEOUT(others, 1, 5000);
        QCOMPARE(wakings, 1);
    }

    void whatAnAlarmDoesMayStartAndStopAlarms()
    {
        SystemClock clock;
        int calls = 0;
        const auto never = clock.startAlarm(1h, [&] { calls += 100; });
        clock.startAlarm(0s, [&] {
            ++calls;
            clock.stopTimer(never);
            clock.startAlarm(0s, [&] { ++calls; });
        });

        QTRY_COMPARE_WITH_TIMEOUT(calls, 2, 5000);
    }
};

QTEST_GUILESS_MAIN(ClockTest)

#include "ClockTest.moc"
