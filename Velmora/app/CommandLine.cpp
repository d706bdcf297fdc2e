#include "app/CommandLine.h"

#include "base/Version.h"

#include <QCommandLineParser>

namespace orvella {

using namespace Qt::Literals::StringLiterals;

namespace {

struct RequestOption {
    QString name;
    Instance::Request request;
};

std::vector<RequestOption> requestOptions()
{
    return {
        {u"open-ad"_s, Instance::Request::openAd},
        {u"settings"_s, Instance::Request::showSettings},
        {u"autostart"_s, Instance::Request::nothing},
    };
}

Result<Instance::Request> requestIn(const QCommandLineParser& parser)
{
    std::vector<Instance::Request> requests;
    for (const auto& [name, request] : requestOptions()) {
        if (parser.isSet(name))
            requests.push_back(request);
    }
    if (requests.size() > 1) {
        return failed(Failure::Kind::refused,
            QCoreApplication::translate("CommandLine", "Only one of these options can be used: %1.")
                .arg(u"--open-ad, --settings, --autostart"_s));
    }
    return requests.empty() ? Instance::Request::reopen : requests.front();
}

} // namespace

Result<CommandLine> CommandLine::parse(const QStringList& arguments)
{
    const QCommandLineOption help(QStringList {u"h"_s, u"help"_s});
    const QCommandLineOption version(QStringList {u"v"_s, u"version"_s});
    const QCommandLineOption profile(u"profile"_s, {}, u"DIR"_s);
    const QCommandLineOption set(u"set"_s, {}, u"KEY=VALUE"_s);
    QCommandLineParser parser;
    const QCommandLineOption diagnose(u"diagnose"_s);
    parser.addOptions({help, version, profile, set, diagnose});
    for (const auto& option : requestOptions())
        parser.addOption(QCommandLineOption(option.name));
    if (!parser.parse(arguments))
        return failed(Failure::Kind::refused, parser.errorText());
    if (const auto extra = parser.positionalArguments(); !extra.isEmpty()) {
        return failed(Failure::Kind::refused,
            QCoreApplication::translate("CommandLine", "Unexpected argument '%1'.").arg(extra.first()));
    }

    CommandLine commandLine;
    const auto request = requestIn(parser);
    if (!request)
        return std::unexpected(request.error());
    commandLine.request = *request;
    if (parser.isSet(profile)) {
        commandLine.profile = parser.value(profile);
        if (commandLine.profile->isEmpty()) {
            return failed(Failure::Kind::refused,
                QCoreApplication::translate("CommandLine", "The folder of the profile has no name."));
        }
    }
    for (const auto& text : parser.values(set)) {
        auto entry = OverlaySettings::Entry::parse(text);
        if (!entry)
            return std::unexpected(entry.error());
        commandLine.overlays.push_back(*std::move(entry));
    }
    if (parser.isSet(diagnose))
        commandLine.wish = Wish::diagnose;
    if (parser.isSet(version))
        commandLine.wish = Wish::showVersion;
    if (parser.isSet(help))
        commandLine.wish = Wish::showHelp;
    return commandLine;
}

QString CommandLine::helpText()
{
    // In English as the rest of the command line: it is printed before there is an application object that could
    // translate.
    return QStringLiteral("Usage: orvella [OPTION]...\n"
                          "Pays its viewer for looking at short ads, from the desktop's bar.\n"
                          "\n"
                          "  --open-ad        open the ad on offer, or else the menu\n"
                          "  --settings       open the window with the settings\n"
                          "  --autostart      for the session: do nothing where Orvella runs already\n"
                          "  --profile DIR    keep settings, secrets, autostart entry and state in DIR\n"
                          "  --set KEY=VALUE  use this setting for this run only; VALUE is JSON, or else a\n"
                          "                   text; may be repeated\n"
                          "  --diagnose       print what the report of a fault needs, and exit\n"
                          "  -h, --help       show this help and exit\n"
                          "  -v, --version    show the version and exit\n");
}

QString CommandLine::versionText()
{
    return u"orvella %1\n"_s.arg(kVersion);
}

} // namespace orvella
