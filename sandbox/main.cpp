#include "base/Clock.h"
#include "base/TerminationSignals.h"
#include "base/Version.h"
#include "sandbox/Options.h"
#include "sandbox/Service.h"

#include <QCoreApplication>
#include <QFile>

#include <chrono>
#include <clocale>
#include <cstdio>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kUsageError = 2;

void say(const QString& line)
{
    std::puts(qUtf8Printable(line));
    std::fflush(stdout);
}

int complain(const QString& sentence, int exitCode)
{
    std::fprintf(stderr, "orvella-sandbox: %s\n", qUtf8Printable(sentence));
    return exitCode;
}

Result<Campaigns> campaignsOf(const Options& options)
{
    if (options.campaignsPath.isEmpty())
        return Campaigns::seeded();
    QFile file(options.campaignsPath);
    if (!file.open(QFile::ReadOnly))
        return failed(Failure::Kind::refused, u"%1: %2"_s.arg(options.campaignsPath, file.errorString()));
    auto campaigns = Campaigns::parse(file.readAll());
    if (!campaigns)
        return failed(campaigns.error().kind, u"%1: %2"_s.arg(options.campaignsPath, campaigns.error().description));
    return campaigns;
}

int serve(const Options& options)
{
    auto campaigns = campaignsOf(options);
    if (!campaigns)
        return complain(campaigns.error().description, kUsageError);
    if (options.requiredSeconds)
        campaigns->requireSeconds(*options.requiredSeconds);

    SystemClock clock;
    const auto startDate = std::chrono::floor<std::chrono::milliseconds>(std::chrono::system_clock::now());
    const auto pollSeconds = options.pollSeconds.value_or(Service::kUsualPollSeconds);
    const auto service =
        Service::start({options.port, options.databasePath, *std::move(campaigns), pollSeconds, options.faults}, clock,
            startDate, say);
    if (!service)
        return complain(service.error().description, EXIT_FAILURE);
    say((*service)->origin());
    return QCoreApplication::exec();
}

} // namespace

int main(int argc, char* argv[])
{
    const QCoreApplication application(argc, argv);
    // The application object has taken on the locale, in which C functions read and write numbers differently.
    std::setlocale(LC_NUMERIC, "C");
    const TerminationSignals endTheProgram;
    QCoreApplication::setApplicationName(u"orvella-sandbox"_s);
    QCoreApplication::setApplicationVersion(kVersion);

    const auto options = Options::parse(QCoreApplication::arguments());
    if (!options)
        return complain(options.error(), kUsageError);
    switch (options->action) {
    case Options::Action::help:
        say(Options::helpText().trimmed());
        return EXIT_SUCCESS;
    case Options::Action::version:
        say(u"orvella-sandbox "_s + QCoreApplication::applicationVersion());
        return EXIT_SUCCESS;
    case Options::Action::run:
        return serve(*options);
    }
}
