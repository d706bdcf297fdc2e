#include "fleet/Fleet.h"

#include "api/Endpoints.h"

#include <QTest>

using namespace orvella;
using namespace orvella::fleet;
using namespace std::chrono_literals;

namespace {

constexpr qint64 kDevices = 20;
/// Every request takes no time at all, so that each is in the second in which its cycle begins.
constexpr Fleet::RoundTrips kAtOnce {0ms, 0ms};

/// How many requests came in this second.
qint64 inSecond(const Fleet& fleet, std::chrono::seconds second)
{
    return fleet.arrivals().peak(second, second + 1s);
}

} // namespace

/// A fleet so small and regular that each of its requests is known beforehand.
class FleetTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void twoHoursAreCountedToTheRequest()
    {
        constexpr qint64 kCycles = 24;
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);

        fleet.liveUntil(2h - 1s);

        const auto& arrivals = fleet.arrivals();
        QCOMPARE(fleet.running(), kDevices);
        QCOMPARE(arrivals.count(endpoints::kRegister), 0);
        QCOMPARE(arrivals.count(endpoints::kWallet), kDevices);
        QCOMPARE(arrivals.count(endpoints::kHeartbeat), kDevices * (1 + kCycles));
        QCOMPARE(arrivals.count(endpoints::kAdsAvailable), kDevices * kCycles);
        QCOMPARE(arrivals.total(), kDevices * (2 + 2 * kCycles));
    }

    void eachCycleIsFiveMinutesAfterTheLast()
    {
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);

        fleet.liveUntil(2h - 1s);

        QCOMPARE(inSecond(fleet, 0s), kDevices * 4);
        for (auto second = 1s; second < 2h; ++second)
            QCOMPARE(inSecond(fleet, second), second % 5min == 0s ? kDevices * 2 : 0);
    }

    void aDeviceThatStopsAsksNoMore()
    {
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);
        fleet.stopBetween(100s, 200s, Fleet::Shape::even);

        fleet.liveUntil(1h);

        QCOMPARE(fleet.running(), 0);
        QCOMPARE(fleet.arrivals().total(), kDevices * 4);
    }

    void refusedDevicesKeepTheirPace()
    {
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);
        fleet.at(100s, [&] { fleet.service().setCondition(ModelService::Condition::refusing); });
        fleet.at(1h + 100s, [&] { fleet.service().setCondition(ModelService::Condition::answering); });

        fleet.liveUntil(2h - 1s);

        QCOMPARE(fleet.arrivals().total(), kDevices * (2 + 2 * 24));
        QCOMPARE(inSecond(fleet, 1h), kDevices * 2);
        QCOMPARE(inSecond(fleet, 1h + 5min), kDevices * 2);
    }

    /// The heartbeat of the second cycle and the question for an ad both hang for a minute.
    void requestsThatHangAreGivenUpAfterAMinuteEach()
    {
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);
        fleet.at(200s, [&] { fleet.service().setCondition(ModelService::Condition::holding); });

        fleet.liveUntil(800s);

        QCOMPARE(inSecond(fleet, 300s), kDevices);
        QCOMPARE(inSecond(fleet, 360s), kDevices);
        QCOMPARE(inSecond(fleet, 720s), kDevices);
        QCOMPARE(inSecond(fleet, 780s), kDevices);
        QCOMPARE(fleet.arrivals().total(), kDevices * (4 + 4));
    }

    void requestsThatHangAreAnsweredTogether()
    {
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);
        fleet.at(200s, [&] { fleet.service().setCondition(ModelService::Condition::holding); });
        fleet.at(330s, [&] { fleet.service().setCondition(ModelService::Condition::answering); });

        fleet.liveUntil(700s);

        QCOMPARE(inSecond(fleet, 300s), kDevices);
        QCOMPARE(inSecond(fleet, 330s), kDevices);
        QCOMPARE(inSecond(fleet, 630s), kDevices * 2);
        QCOMPARE(fleet.arrivals().total(), kDevices * (4 + 2 + 2));
    }

    void devicesThatStartAgainBeginAnew()
    {
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);
        fleet.at(100s, [&] { fleet.restartAll(); });

        fleet.liveUntil(500s);

        QCOMPARE(inSecond(fleet, 100s), kDevices * 4);
        QCOMPARE(inSecond(fleet, 300s), 0);
        QCOMPARE(inSecond(fleet, 400s), kDevices * 2);
    }

    void thePauseThatTheServiceNamesIsTaken()
    {
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);
        fleet.service().spreadPauses(600, 600);

        fleet.liveUntil(1h - 1s);

        QCOMPARE(inSecond(fleet, 300s), 0);
        QCOMPARE(inSecond(fleet, 600s), kDevices * 2);
        QCOMPARE(fleet.arrivals().count(endpoints::kAdsAvailable), kDevices * 6);
    }

    void aPauseOfItsOwnForEachDeviceTakesThemApart()
    {
        Fleet fleet(kDevices, kAtOnce);
        fleet.startBetween(0s, 0s, Fleet::Shape::even);
        fleet.service().spreadPauses(150, 450);

        fleet.liveUntil(450s);

        QVERIFY(fleet.arrivals().peak(1s, 451s) < kDevices / 2);
        QVERIFY(fleet.arrivals().count(endpoints::kAdsAvailable) >= kDevices * 2);
    }

    /// Two and a half round trips there and half of one back, for each of the two requests.
    void aCycleIsLongerByItsRoundTrips()
    {
        Fleet fleet(1, {1s, 1s});
        fleet.startBetween(0s, 0s, Fleet::Shape::even);

        fleet.liveUntil(2h);

        // Four requests before the first pause, two more in each cycle, and up to a quarter more than three seconds
        // each.
        const auto cycles = fleet.arrivals().count(endpoints::kAdsAvailable);
        QVERIFY(cycles >= 2h / (300s + 2 * 3750ms) && cycles <= 2h / (300s + 2 * 3s) + 1);
        QCOMPARE(fleet.arrivals().peak(0s, 2s), 0);
        QCOMPARE(fleet.arrivals().peak(2s, 4s), 1);
    }
};

QTEST_GUILESS_MAIN(FleetTest)

#include "FleetTest.moc"
