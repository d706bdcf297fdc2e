#include "simulation/Life.h"

#include <QApplication>
#include <QCommandLineParser>

#include <cstdio>
#include <random>

using namespace orvella::simulation;
using namespace Qt::Literals::StringLiterals;

/// Millions of small objects come and go: what the address sanitizer notes of each is left out, what it checks is not.
extern "C" const char* __asan_default_options() // NOLINT(bugprone-reserved-identifier): its name for it
{
    return "malloc_context_size=0:quarantine_size_mb=4:thread_local_quarantine_size_kb=64:max_malloc_fill_size=0";
}

namespace {

constexpr qint64 kDaysOfLife = 5;
constexpr int kRuleBroken = 1;
constexpr int kUsageError = 2;

struct Wishes {
    qint64 days = 0;
    quint64 seed = 0;
    Journal::Telling telling = Journal::Telling::whenBroken;
};

void print(const QString& line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

/// The windows are on no screen, which Qt mentions at every turn.
void dropQtMessages(QtMsgType type, const QMessageLogContext& /*context*/, const QString& message)
{
    if (type == QtCriticalMsg || type == QtFatalMsg)
        std::fputs(message.toUtf8().constData(), stderr);
}

quint64 freshSeed()
{
    // Short enough to be typed.
    return std::random_device()() % 1'000'000'000;
}

std::optional<Wishes> wishes(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Lets simulated viewers live with Orvella and checks what must always hold."_s);
    parser.addHelpOption();
    parser.addOption(
        {u"days"_s, u"How many days in all, %1 of them in each life."_s.arg(kDaysOfLife), u"N"_s, u"100"_s});
    parser.addOption(
        {u"seed"_s, u"The seed of the first life; each further one has the next. Else a fresh one."_s, u"S"_s});
    parser.addOption({u"trace"_s, u"Tell everything that happens."_s});
    if (!parser.parse(application.arguments()))
        return std::nullopt;
    if (parser.isSet(u"help"_s))
        parser.showHelp();
    bool isNumber = true;
    Wishes result;
    result.days = parser.value(u"days"_s).toLongLong(&isNumber);
    if (!isNumber || result.days < 1)
        return std::nullopt;
    result.seed = parser.isSet(u"seed"_s) ? parser.value(u"seed"_s).toULongLong(&isNumber) : freshSeed();
    if (!isNumber)
        return std::nullopt;
    if (parser.isSet(u"trace"_s))
        result.telling = Journal::Telling::always;
    return result;
}

struct Sum {
    qint64 steps = 0;
    qint64 paidViews = 0;
};

/// Whether the life was lived without a broken rule.
bool isLived(quint64 seed, qint64 days, const Wishes& wishes, Sum& sum)
{
    Life life(seed, wishes.telling);
    life.live(std::chrono::days(days));
    life.end();
    sum.steps += life.steps();
    sum.paidViews += life.creditedViews();
    if (!life.journal().isBroken())
        return true;
    if (wishes.telling == Journal::Telling::whenBroken) {
        for (const auto& line : life.journal().lastEvents())
            print(line);
    }
    print(u"simulate: seed %1 breaks a rule: %2"_s.arg(seed).arg(life.journal().brokenRule()));
    print(u"simulate: ./dev simulate --days %1 --seed %2 --trace shows it again"_s.arg(days).arg(seed));
    return false;
}

} // namespace

int main(int argc, char** argv)
{
    qInstallMessageHandler(dropQtMessages);
    qputenv("QT_QPA_PLATFORM", "offscreen");
    const QApplication application(argc, argv);
    QApplication::setQuitOnLastWindowClosed(false);
    const auto wanted = wishes(application);
    if (!wanted) {
        std::fputs("simulate: it takes --days N, --seed S and --trace, with whole numbers\n", stderr);
        return kUsageError;
    }
    Sum sum;
    auto seed = wanted->seed;
    for (auto left = wanted->days; left > 0; left -= kDaysOfLife, ++seed) {
        if (!isLived(seed, std::min(left, kDaysOfLife), *wanted, sum)) {
            print(u"simulate: FAILED"_s);
            return kRuleBroken;
        }
    }
    print(u"simulate: %1 days from seed %2, %3 steps, %4 views paid: every rule held"_s.arg(wanted->days)
            .arg(wanted->seed)
            .arg(sum.steps)
            .arg(sum.paidViews));
    return 0;
}
