#include "ui/ad/CountdownGauge.h"

#include "support/FakePlatform.h"

#include <QAccessible>
#include <QSignalSpy>
#include <QTest>

#include <limits>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakeLook desktop;
    Look look {desktop};
};

/// The colour in the middle of the ring's stroke at this hour.
QColor ringAt(CountdownGauge& gauge, int hour)
{
    constexpr int kScale = 4;
    QImage image(gauge.size() * kScale, QImage::Format_ARGB32);
    image.setDevicePixelRatio(kScale);
    image.fill(Qt::white);
    gauge.render(&image, {}, {}, QWidget::DrawChildren);
    const auto angle = (hour - 3) * M_PI / 6;
    return image.pixelColor(
        static_cast<int>((11 + 10 * std::cos(angle)) * kScale), static_cast<int>((11 + 10 * std::sin(angle)) * kScale));
}

} // namespace

class CountdownGaugeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theFractionIsWhatHasBeenWatched_data()
    {
        QTest::addColumn<qint64>("remaining");
        QTest::addColumn<qint64>("total");
        QTest::addColumn<double>("fraction");
        const auto row = [](const char* name, qint64 remaining, qint64 total, double fraction) {
            QTest::newRow(name) << remaining << total << fraction;
        };
        row("at the start", 15, 15, 0);
        row("on the way", 6, 15, 0.6);
        row("at the end", 0, 15, 1);
        row("no time at all", 0, 0, 0);
        row("more left than there was", 20, 15, 0);
        row("a negative total", -3, -3, 0);
        row("enormous", 0, std::numeric_limits<qint64>::max(), 1);
        row("beyond reason", std::numeric_limits<qint64>::min(), 1, 9223372036854775809.0);
    }

    void theFractionIsWhatHasBeenWatched()
    {
        QFETCH(const qint64, remaining);
        QFETCH(const qint64, total);
        QFETCH(const double, fraction);

        QCOMPARE(CountdownGauge::fraction(remaining, total), fraction);
    }

    void itIs22PointsEachWay()
    {
        World world;

        QCOMPARE(CountdownGauge(world.look, 15).size(), QSize(22, 22));
    }

    void theRingClosesFromTwelveOClockWithTheClock()
    {
        World world;
        CountdownGauge gauge(world.look, 12);
        const auto ink = world.look.theme().ink;
        QVERIFY(ringAt(gauge, 1) != ink);

        gauge.setRemaining(6);

        QCOMPARE(ringAt(gauge, 1), ink);
        QCOMPARE(ringAt(gauge, 5), ink);
        QVERIFY(ringAt(gauge, 7) != ink);
        QVERIFY(ringAt(gauge, 11) != ink);

        gauge.setRemaining(0);
        for (const int hour : {1, 4, 7, 11})
            QCOMPARE(ringAt(gauge, hour), ink);
    }

    void itsValueIsTheSecondsThatAreLeft()
    {
        World world;
        CountdownGauge gauge(world.look, 15);
        auto* const accessible = QAccessible::queryAccessibleInterface(&gauge);

        gauge.setRemaining(7);

        QCOMPARE(accessible->role(), QAccessible::ProgressBar);
        QCOMPARE(accessible->text(QAccessible::Name), u"Ad time remaining"_s);
        QCOMPARE(accessible->text(QAccessible::Value), u"7 seconds"_s);
        QCOMPARE(accessible->valueInterface()->currentValue().toInt(), 7);
        QCOMPARE(accessible->valueInterface()->maximumValue().toInt(), 15);
    }

    void itIsAnnouncedAtTheStartHalfWayAndAtTheEndOnly()
    {
        World world;
        CountdownGauge gauge(world.look, 15);
        const QSignalSpy announced(&gauge, &CountdownGauge::announced);

        gauge.show();
        for (int left = 14; left >= 0; --left) {
            gauge.setRemaining(left);
            gauge.hide();
            gauge.show();
        }

        QCOMPARE(announced, (QList<QVariantList> {{qint64 {15}}, {qint64 {7}}, {qint64 {0}}}));
    }

    void aViewThatFailsIsAnnouncedAtItsEndOnce()
    {
        World world;
        CountdownGauge gauge(world.look, 15);
        gauge.show();
        const QSignalSpy announced(&gauge, &CountdownGauge::announced);

        gauge.setRemaining(0);
        gauge.setRemaining(0);

        QCOMPARE(announced, (QList<QVariantList> {{qint64 {0}}}));
    }
};

QTEST_MAIN(CountdownGaugeTest)

#include "CountdownGaugeTest.moc"
