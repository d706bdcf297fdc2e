#include "sandbox/Options.h"

#include "sandbox/Campaign.h"

#include <QCommandLineParser>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kGreatestPort = 65535;
constexpr qint64 kLongestPoll = 86'400;

void declare(QCommandLineParser& parser)
{
    parser.setApplicationDescription(
        u"A local Orvella service to develop and try against. It listens on 127.0.0.1 only."
        " The first line it prints is its address; SIGTERM or SIGINT ends it."_s);
    parser.addOptions({
        {{u"h"_s, u"help"_s}, u"Print this and end."_s},
        {{u"v"_s, u"version"_s}, u"Print the version and end."_s},
        {u"port"_s, u"Listen on this port; 0, the default, takes any free one."_s, u"N"_s},
        {u"database"_s, u"Keep everything in this SQLite file; without it, in memory."_s, u"FILE"_s},
        {u"campaigns"_s, u"Run the campaigns of this JSON file instead of the built-in ones."_s, u"FILE"_s},
        {u"poll-seconds"_s, u"Ask the clients to poll every N seconds (60)."_s, u"N"_s},
        {u"required-seconds"_s, u"Let every ad need only N seconds, to try things quickly."_s, u"N"_s},
        {u"fault"_s,
            u"Spoil answers: CALL is register, heartbeat, preferences, available, start, complete, click, wallet or"
            " all; KIND is delay:MS, status:CODE, reset, garbage or truncated. May be repeated."_s,
            u"CALL=KIND[:ARG][,…]"_s},
    });
}

using Number = std::expected<std::optional<qint64>, QString>;

/// Nothing where the option was not given.
Number number(const QCommandLineParser& parser, const QString& name, qint64 least, qint64 most)
{
    if (!parser.isSet(name))
        return std::nullopt;
    auto isNumber = false;
    const auto value = parser.value(name).toLongLong(&isNumber);
    if (!isNumber || value < least || value > most)
        return std::unexpected(u"--%1 needs a number from %2 to %3."_s.arg(name).arg(least).arg(most));
    return value;
}

} // namespace

std::expected<Options, QString> Options::parse(const QStringList& arguments)
{
    QCommandLineParser parser;
    declare(parser);
    if (!parser.parse(arguments))
        return std::unexpected(parser.errorText());
    Options options;
    if (parser.isSet(u"help"_s))
        options.action = Action::help;
    else if (parser.isSet(u"version"_s))
        options.action = Action::version;
    if (!parser.positionalArguments().isEmpty())
        return std::unexpected(u"\"%1\" is not an option."_s.arg(parser.positionalArguments().constFirst()));

    const auto port = number(parser, u"port"_s, 0, kGreatestPort);
    const auto poll = number(parser, u"poll-seconds"_s, 1, kLongestPoll);
    const auto required = number(parser, u"required-seconds"_s, 0, Campaign::kLongestRequirement);
    for (const auto& read : {port, poll, required}) {
        if (!read)
            return std::unexpected(read.error());
    }
    options.port = static_cast<quint16>(port->value_or(0));
    options.pollSeconds = *poll;
    options.requiredSeconds = *required;
    for (const auto& fault : parser.values(u"fault"_s)) {
        if (const auto added = options.faults.add(fault); !added)
            return std::unexpected(u"--fault: %1."_s.arg(added.error()));
    }
    for (const auto& name : {u"database"_s, u"campaigns"_s}) {
        if (parser.isSet(name) && parser.value(name).isEmpty())
            return std::unexpected(u"--%1 needs a file."_s.arg(name));
    }
    options.databasePath = parser.value(u"database"_s);
    options.campaignsPath = parser.value(u"campaigns"_s);
    return options;
}

QString Options::helpText()
{
    QCommandLineParser parser;
    declare(parser);
    return parser.helpText();
}

} // namespace orvella::sandbox
