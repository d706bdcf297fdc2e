#include "VelmoraApp.h"

#include "api/CurlTransport.h"
#include "app/AppDelegate.h"
#include "app/CommandLine.h"
#include "app/Diagnosis.h"
#include "app/Translations.h"
#include "base/ApplicationId.h"
#include "base/CoreDumps.h"
#include "base/TerminationSignals.h"
#include "base/Version.h"
#include "platform/DisplayChoice.h"
#include "platform/Instance.h"
#include "platform/SystemPlatform.h"

#include <QApplication>

#include <clocale>
#include <cstdio>
#include <optional>
#include <utility>

namespace orvella {

namespace {

constexpr int kNoDisplayError = 1;
constexpr int kUsageError = 2;

void print(std::FILE* stream, const QString& text)
{
    std::fputs(text.toLocal8Bit().constData(), stream);
}

/// The arguments as they are, before there is an application object that would want a display.
QStringList arguments(int argc, char** argv)
{
    QStringList texts;
    for (int place = 0; place < argc; ++place)
        texts.append(QString::fromLocal8Bit(argv[place]));
    return texts;
}

/// After the application object.
void describeApplication()
{
    // The application object has taken on the viewer's locale, in which C functions read and write numbers differently.
    std::setlocale(LC_NUMERIC, "C");
    QApplication::setApplicationName(QStringLiteral("orvella"));
    QApplication::setApplicationDisplayName(QStringLiteral("Orvella"));
    QApplication::setApplicationVersion(kVersion);
    QApplication::setDesktopFileName(kApplicationId);
    QApplication::setQuitOnLastWindowClosed(false);
}

int runInBar(int argc, char** argv, const CommandLine& commandLine)
{
    std::optional<DisplayChoice> display(std::in_place);
    if (display->isEmpty()) {
        print(stderr, QStringLiteral("orvella: There is no display to show anything on.\n"));
        return kNoDisplayError;
    }
    TerminationSignals::endAtOnce();
    SystemPlatform::prepareProcess();
    // The session starts Orvella by its login item; restored by the session manager too, it would run twice.
    QApplication::setAttribute(Qt::AA_DisableSessionManager);
    const QApplication application(argc, argv);
    if (display->isRefused()) {
        print(stderr, QStringLiteral("orvella: The display does not let the program in.\n"));
        return kNoDisplayError;
    }
    display.reset();
    describeApplication();

    SystemPlatform platform(commandLine.profile, commandLine.overlays);
    if (!platform.instance().claim(commandLine.request))
        return 0;
    const Translations translations(Translations::languagesOf(platform.lend().locale));
    // Before anything is written: from now on nothing of it is cut short, unless it takes more than a second.
    const TerminationSignals endsByTheSession;
    CurlTransport transport({.proxies = platform.lend().proxies});
    AppDelegate delegate(platform.lend(), transport);
    delegate.applicationDidFinishLaunching();
    // A launch is all that a reopening asks for.
    if (commandLine.request != Instance::Request::reopen)
        delegate.perform(commandLine.request);
    platform.instance().watch([&delegate](Instance::Request request) { delegate.perform(request); });
    platform.instance().offerReport([&delegate] { return delegate.diagnosis(); });
    return QApplication::exec();
}

QCoro::Task<> printDiagnosis(Platform platform, bool isAnyRunning)
{
    const auto text = co_await Diagnosis::ofOther(platform, isAnyRunning);
    print(stdout, text);
    QCoreApplication::exit();
}

/// The running program knows its errors and its surroundings; where none runs, this one looks for itself.
int diagnose(int argc, char** argv, const CommandLine& commandLine)
{
    SystemPlatform::prepareProcess();
    // The fault may be that there is no display, or none that lets the program in.
    std::optional<DisplayChoice> display(std::in_place);
    const QApplication application(argc, argv);
    display.reset();
    describeApplication();
    SystemPlatform platform(commandLine.profile, commandLine.overlays);
    const auto running = platform.instance().running();
    if (running.report) {
        print(stdout, *running.report);
        return 0;
    }
    QMetaObject::invokeMethod(qApp, [&] { printDiagnosis(platform.lend(), running.isThere); }, Qt::QueuedConnection);
    return QApplication::exec();
}

} // namespace

int VelmoraApp::run(int argc, char** argv)
{
    leaveNoCoreDumps();
    const auto commandLine = CommandLine::parse(arguments(argc, argv));
    if (!commandLine) {
        print(stderr, QStringLiteral("orvella: %1\n").arg(commandLine.error().description));
        return kUsageError;
    }
    switch (commandLine->wish) {
    case CommandLine::Wish::showHelp:
        print(stdout, CommandLine::helpText());
        return 0;
    case CommandLine::Wish::showVersion:
        print(stdout, CommandLine::versionText());
        return 0;
    case CommandLine::Wish::diagnose:
        return diagnose(argc, argv, *commandLine);
    case CommandLine::Wish::run:
        break;
    }
    return runInBar(argc, argv, *commandLine);
}

} // namespace orvella
