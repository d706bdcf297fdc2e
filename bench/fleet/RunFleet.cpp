#include "fleet/Fleet.h"
#include "fleet/Scenario.h"

#include <QCommandLineParser>
#include <QCoreApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFile>

#include <cstdio>
#include <unistd.h>

using namespace orvella::fleet;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kUsageError = 2;
constexpr int kShortestHours = 3;
/// How far above the greatest second of the calm before a second is that is not calm.
constexpr double kDisturbance = 1.5;

struct Wishes {
    qint64 devices = 0;
    int hours = 0;
    QString folder;
    QStringList scenarios;
};

void print(const QString& line)
{
    std::puts(line.toUtf8().constData());
    std::fflush(stdout);
}

std::optional<Wishes> wishes(const QCoreApplication& application)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(u"Tells what so many devices ask of the service."_s);
    parser.addHelpOption();
    parser.addOption({u"devices"_s, u"How many devices."_s, u"N"_s, u"1000"_s});
    parser.addOption({u"hours"_s, u"How long each scenario takes, at least three hours."_s, u"H"_s, u"6"_s});
    parser.addOption(
        {u"counts"_s, u"A folder for the requests of each second, a file for each scenario."_s, u"FOLDER"_s});
    parser.addOption({u"only"_s, u"Only this scenario; may be given again."_s, u"NAME"_s});
    if (!parser.parse(application.arguments()))
        return std::nullopt;
    if (parser.isSet(u"help"_s))
        parser.showHelp();
    bool areDevices = false;
    bool areHours = false;
    const Wishes result {parser.value(u"devices"_s).toLongLong(&areDevices), parser.value(u"hours"_s).toInt(&areHours),
        parser.value(u"counts"_s), parser.values(u"only"_s)};
    const bool isSense = areDevices && areHours && result.devices > 0 && result.hours >= kShortestHours;
    return isSense ? std::optional(result) : std::nullopt;
}

/// The memory of this process, in bytes.
qint64 residentBytes()
{
    QFile file(u"/proc/self/statm"_s);
    if (!file.open(QFile::ReadOnly))
        return 0;
    return file.readAll().split(' ').value(1).toLongLong() * sysconf(_SC_PAGESIZE);
}

void tellMemory(qint64 devices)
{
    const auto before = residentBytes();
    Fleet fleet(devices, {10ms, 200ms});
    fleet.startBetween(0s, 300s, Fleet::Shape::even);
    fleet.liveUntil(600s);
    const auto bytes = (residentBytes() - before) / devices;
    print(u"%1 devices, %2 of them running, take %3 bytes each."_s.arg(devices).arg(fleet.running()).arg(bytes));
}

void tell(const Scenario& scenario, const Arrivals& arrivals)
{
    print(u"\n%1 (%2)\n  %3 %4 %5"_s.arg(scenario.description, scenario.name,
        u"requests per second"_s.leftJustified(32), u"mean"_s.rightJustified(10), u"greatest"_s.rightJustified(10)));
    for (const auto& part : scenario.parts) {
        print(u"  %1 %2 %3"_s.arg(part.name, -32)
                .arg(arrivals.mean(part.from, part.to), 10, 'f', 2)
                .arg(arrivals.peak(part.from, part.to), 10));
    }
    if (!scenario.disturbed)
        return;
    const auto calm = static_cast<double>(arrivals.peak(*scenario.disturbed / 2, *scenario.disturbed));
    const auto last = arrivals.lastAbove(calm * kDisturbance);
    if (!last || *last < *scenario.disturbed)
        print(u"  never above %1 times the greatest second before"_s.arg(kDisturbance));
    else
        print(u"  last above %1 times the greatest second before: %2 minutes after the disturbance began"_s
                .arg(kDisturbance)
                .arg(static_cast<double>((*last - *scenario.disturbed).count()) / 60, 0, 'f', 1));
}

void keep(const QString& folder, const Scenario& scenario, const Arrivals& arrivals)
{
    QFile file(QDir(folder).filePath(scenario.name + u".txt"_s));
    if (!QDir().mkpath(folder) || !file.open(QFile::WriteOnly))
        qFatal("The requests of each second cannot be kept.");
    for (const auto count : arrivals.inSecond())
        file.write(QByteArray::number(count) + '\n');
}

} // namespace

int main(int argc, char** argv)
{
    const QCoreApplication application(argc, argv);
    const auto wanted = wishes(application);
    if (!wanted) {
        std::fputs("fleet: it takes --devices N, at least 1, and --hours H, at least 3\n", stderr);
        return kUsageError;
    }
    tellMemory(wanted->devices);
    for (const auto& scenario : everyScenario(std::chrono::hours(wanted->hours))) {
        if (!wanted->scenarios.isEmpty() && !wanted->scenarios.contains(scenario.name))
            continue;
        QElapsedTimer time;
        time.start();
        const auto arrivals = scenario.live(wanted->devices);
        tell(scenario, arrivals);
        print(u"  %1 requests in all, lived in %2 seconds"_s.arg(arrivals.total())
                .arg(static_cast<double>(time.elapsed()) / 1000, 0, 'f', 1));
        if (!wanted->folder.isEmpty())
            keep(wanted->folder, scenario, arrivals);
    }
    return 0;
}
