#include "simulation/Life.h"
#include "support/AllocatedBytes.h"

#include <QDir>
#include <QTest>

using namespace orvella::simulation;
using namespace Qt::Literals::StringLiterals;

namespace {

qsizetype entries(const QString& folder)
{
    return QDir(folder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot | QDir::System).size();
}

struct Use {
    std::size_t bytes = orvella::allocatedBytes();
    qsizetype descriptors = entries(u"/proc/self/fd"_s);
    qsizetype threads = entries(u"/proc/self/task"_s);
};

/// The least that is in use at the end of one of these days: at another one a window may be open.
Use leastUse(Life& life, int days)
{
    life.live(std::chrono::days(1));
    Use least;
    for (int day = 1; day < days; ++day) {
        life.live(std::chrono::days(1));
        const Use use;
        least.bytes = std::min(least.bytes, use.bytes);
        least.descriptors = std::min(least.descriptors, use.descriptors);
        least.threads = std::min(least.threads, use.threads);
    }
    return least;
}

} // namespace

/// A month of one run.
class LongLifeTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theLastWeekOfAMonthTakesNoMoreThanTheFirst_data()
    {
        QTest::addColumn<quint64>("seed");
        for (quint64 seed = 1; seed <= 3; ++seed)
            QTest::addRow("seed %llu", seed) << seed;
    }

    void theLastWeekOfAMonthTakesNoMoreThanTheFirst()
    {
        QFETCH(const quint64, seed);
        // What the toolkit keeps of the texts that it has measured.
        constexpr std::size_t kNoise = 128 * 1024;
        constexpr std::size_t kMostTimers = 8;
        Life life(seed, Journal::Telling::whenBroken, Life::Restarts::never);

        // The first shadow of a window brings threads and memory that the toolkit keeps.
        life.desktop().windows.composites = true;

        const auto week = leastUse(life, 7);
        life.live(std::chrono::days(16));
        const auto month = leastUse(life, 7);

        qInfo(
            "%zu KiB in the first week, %zu in the last; %lld and %lld descriptors, %lld and %lld threads, %zu timers",
            week.bytes / 1024, month.bytes / 1024, static_cast<long long>(week.descriptors),
            static_cast<long long>(month.descriptors), static_cast<long long>(week.threads),
            static_cast<long long>(month.threads), life.programClock().running());
        QCOMPARE(life.journal().brokenRule(), QString());
        QVERIFY(month.bytes < week.bytes + kNoise);
        // The toolkit draws on threads of its own, which come with the first large picture.
        constexpr qsizetype kThreadsOfToolkit = 4;
        QVERIFY(month.descriptors <= week.descriptors + kThreadsOfToolkit);
        QVERIFY(month.threads <= week.threads + kThreadsOfToolkit);
        QVERIFY(life.programClock().running() <= kMostTimers);
        life.end();
    }
};

QTEST_MAIN(LongLifeTest)
#include "LongLifeTest.moc"
