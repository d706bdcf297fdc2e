#include "support/HostileCall.h"

#include <QDBusUnixFileDescriptor>
#include <QDBusVariant>

#include <limits>
#include <unistd.h>
#include <utility>

namespace orvella {

using namespace Qt::StringLiterals;

namespace {

constexpr int kLeast = std::numeric_limits<int>::min();
constexpr int kMost = std::numeric_limits<int>::max();

const auto kName = u"io.orvella.Orvella"_s;
const auto kPath = u"/io/orvella/Orvella"_s;
const auto kItemPath = u"/StatusNotifierItem"_s;
const auto kApplication = u"org.freedesktop.Application"_s;
const auto kReport = u"io.orvella.Orvella.Report"_s;
const auto kItem = u"org.kde.StatusNotifierItem"_s;
const auto kProperties = u"org.freedesktop.DBus.Properties"_s;
const auto kPeer = u"org.freedesktop.DBus.Peer"_s;
const auto kIntrospectable = u"org.freedesktop.DBus.Introspectable"_s;

const auto kUnknownMethod = u"org.freedesktop.DBus.Error.UnknownMethod"_s;
const auto kUnknownInterface = u"org.freedesktop.DBus.Error.UnknownInterface"_s;
const auto kUnknownObject = u"org.freedesktop.DBus.Error.UnknownObject"_s;
const auto kUnknownProperty = u"org.freedesktop.DBus.Error.UnknownProperty"_s;
const auto kInvalidArguments = u"org.freedesktop.DBus.Error.InvalidArgs"_s;
const auto kReadOnly = u"org.freedesktop.DBus.Error.PropertyReadOnly"_s;

QString megabyte()
{
    return QString(1024 * 1024, u'x');
}

/// Nearly as deep as the bus lets it through.
QVariant nested()
{
    constexpr int kDepth = 55;
    QVariant value = 1;
    for (int level = 0; level < kDepth; ++level)
        value = QVariant::fromValue(QDBusVariant(value));
    return value;
}

QVariantMap manyFacts()
{
    QVariantMap facts;
    for (int fact = 0; fact < 20'000; ++fact)
        facts.insert(QString::number(fact), u"fact"_s);
    return facts;
}

/// What a caller may say of its platform.
std::vector<std::pair<QByteArray, QVariantMap>> platforms()
{
    return {
        {"of nothing", {}},
        {"of a megabyte", {{megabyte(), megabyte()}}},
        {"of many facts", manyFacts()},
        {"that is nested deeply", {{u"activation-token"_s, nested()}}},
        {"with a token that is none", {{u"activation-token"_s, 7}, {u"desktop-startup-id"_s, QStringList {u"x"_s}}}},
        {"with a token of a megabyte", {{u"activation-token"_s, megabyte()}}},
        {"with control characters", {{u"activation-token"_s, u"\x01\n\x1b[31m\u202e"_s}, {u"\n"_s, u"\r"_s}}},
        {"with a descriptor", {{u"activation-token"_s, QVariant::fromValue(QDBusUnixFileDescriptor(STDIN_FILENO))}}},
    };
}

QList<HostileCall> wrongCallsOfTheApplication()
{
    const QVariantMap none;
    return {
        {"Activate without arguments", kPath, kApplication, u"Activate"_s, {}, kUnknownMethod},
        {"Activate with a text", kPath, kApplication, u"Activate"_s, {u"now"_s}, kUnknownMethod},
        {"Activate with one too many", kPath, kApplication, u"Activate"_s, {none, u"x"_s}, kUnknownMethod},
        {"Activate with a list", kPath, kApplication, u"Activate"_s, {QVariant(QVariantList {none})}, kUnknownMethod},
        {"activate", kPath, kApplication, u"activate"_s, {none}, kUnknownMethod},
        {"Open without its addresses", kPath, kApplication, u"Open"_s, {none}, kUnknownMethod},
        {"Open with one address", kPath, kApplication, u"Open"_s, {u"file:///"_s, none}, kUnknownMethod},
        {"ActivateAction with one too few", kPath, kApplication, u"ActivateAction"_s, {u"settings"_s, QVariantList()},
            kUnknownMethod},
        {"ActivateAction with one too many", kPath, kApplication, u"ActivateAction"_s,
            {u"settings"_s, QVariantList(), none, none}, kUnknownMethod},
        {"ActivateAction with a number", kPath, kApplication, u"ActivateAction"_s, {7, QVariantList(), none},
            kUnknownMethod},
        {"what the class has besides", kPath, kApplication, u"deleteLater"_s, {}, kUnknownMethod},
        {"the same without an interface", kPath, {}, u"deleteLater"_s, {}, kUnknownMethod},
        {"another interface", kPath, u"org.qtproject.Qt.QObject"_s, u"deleteLater"_s, {}, kUnknownInterface},
        {"the interface of the item", kPath, kItem, u"Activate"_s, {1, 1}, kUnknownInterface},
        {"a name of a megabyte", kPath, kApplication, u"Activate"_s, {megabyte()}, kUnknownMethod},
        {"the report with an argument", kPath, kReport, u"Diagnose"_s, {u"everything"_s}, kInvalidArguments},
        {"the report of a megabyte", kPath, kReport, u"Diagnose"_s, {megabyte(), 7}, kInvalidArguments},
        {"another report", kPath, kReport, u"answerWith"_s, {}, kUnknownMethod},
        {"Set of a property of the application", kPath, kProperties, u"Set"_s,
            {kApplication, u"objectName"_s, QVariant::fromValue(QDBusVariant(u"x"_s))}, kReadOnly},
        {"Set of a property of the report", kPath, kProperties, u"Set"_s,
            {kReport, u"objectName"_s, QVariant::fromValue(QDBusVariant(u"x"_s))}, kReadOnly},
        {"Get of a property of the application", kPath, kProperties, u"Get"_s, {kApplication, u"objectName"_s},
            kUnknownProperty},
        {"another object", u"/io/orvella/Orvella/Window"_s, kApplication, u"Activate"_s, {none}, kUnknownObject},
        {"no object", u"/nowhere"_s, kIntrospectable, u"Introspect"_s, {}, kUnknownObject},
    };
}

QList<HostileCall> wrongCallsOfTheItem()
{
    return {
        {"Activate with texts", kItemPath, kItem, u"Activate"_s, {u"1"_s, u"1"_s}, kUnknownMethod},
        {"Activate with fractions", kItemPath, kItem, u"Activate"_s, {1.5, 1.5}, kUnknownMethod},
        {"Activate with wide numbers", kItemPath, kItem, u"Activate"_s, {qint64(1), qint64(1)}, kUnknownMethod},
        {"Activate with one too few", kItemPath, kItem, u"Activate"_s, {1}, kUnknownMethod},
        {"ContextMenu with one too many", kItemPath, kItem, u"ContextMenu"_s, {1, 1, 1}, kUnknownMethod},
        {"Scroll with two numbers", kItemPath, kItem, u"Scroll"_s, {1, 1}, kUnknownMethod},
        {"a token that is none", kItemPath, kItem, u"ProvideXdgActivationToken"_s, {7}, kUnknownMethod},
        {"a signal", kItemPath, kItem, u"NewTitle"_s, {}, kUnknownMethod},
        {"what the class has besides", kItemPath, {}, u"findWatcher"_s, {}, kUnknownMethod},
        {"a setter", kItemPath, kItem, u"setDescription"_s, {u"$1,000,000"_s}, kUnknownMethod},
        {"an object below it", kItemPath + u"/Menu"_s, kItem, u"Activate"_s, {1, 1}, kUnknownObject},
        {"Set of a property", kItemPath, kProperties, u"Set"_s,
            {kItem, u"Title"_s, QVariant::fromValue(QDBusVariant(u"$1,000,000"_s))}, kReadOnly},
        {"Set of a property of another type", kItemPath, kProperties, u"Set"_s,
            {kItem, u"IconPixmap"_s, QVariant::fromValue(QDBusVariant(megabyte()))}, kReadOnly},
        {"Set without an interface", kItemPath, kProperties, u"Set"_s,
            {u""_s, u"Title"_s, QVariant::fromValue(QDBusVariant(u"$1,000,000"_s))}, kReadOnly},
        {"Set of what is no property", kItemPath, kProperties, u"Set"_s,
            {kItem, u"objectName"_s, QVariant::fromValue(QDBusVariant(u"x"_s))}, kReadOnly},
        {"Get of what is no property", kItemPath, kProperties, u"Get"_s, {kItem, u"objectName"_s}, kUnknownProperty},
        {"Get of a megabyte", kItemPath, kProperties, u"Get"_s, {kItem, megabyte()}, kUnknownProperty},
        {"Get of another interface", kItemPath, kProperties, u"Get"_s, {kApplication, u"Title"_s}, kUnknownInterface},
        {"GetAll of no interface", kItemPath, kProperties, u"GetAll"_s, {u"no.such"_s}, kUnknownInterface},
        {"Get with one too few", kItemPath, kProperties, u"Get"_s, {kItem}, kUnknownMethod},
    };
}

} // namespace

QList<HostileCall> HostileCall::idle()
{
    QList<HostileCall> calls {
        {"Scroll to the end", kItemPath, kItem, u"Scroll"_s, {kMost, u"vertical"_s}},
        {"Scroll to the other end", kItemPath, kItem, u"Scroll"_s, {kLeast, u"horizontal"_s}},
        {"Scroll sideways", kItemPath, kItem, u"Scroll"_s, {0, u"\x01sideways\n"_s}},
        {"Scroll by a megabyte", kItemPath, kItem, u"Scroll"_s, {1, megabyte()}},
        {"SecondaryActivate", kItemPath, kItem, u"SecondaryActivate"_s, {kLeast, kMost}},
        {"an empty token", kItemPath, kItem, u"ProvideXdgActivationToken"_s, {u""_s}},
        {"a token of a megabyte", kItemPath, kItem, u"ProvideXdgActivationToken"_s, {megabyte()}},
        {"a token of control characters", kItemPath, kItem, u"ProvideXdgActivationToken"_s, {u"\x01\n\x1b[31m"_s}},
        {"GetAll", kItemPath, kProperties, u"GetAll"_s, {kItem}},
        {"Get without an interface", kItemPath, kProperties, u"Get"_s, {u""_s, u"Title"_s}},
        {"Introspect of the item", kItemPath, kIntrospectable, u"Introspect"_s, {}},
        {"Introspect of the application", kPath, kIntrospectable, u"Introspect"_s, {}},
        {"Introspect of the root", u"/"_s, kIntrospectable, u"Introspect"_s, {}},
        {"GetAll of the application", kPath, kProperties, u"GetAll"_s, {kApplication}},
        {"Ping", kPath, kPeer, u"Ping"_s, {}},
        {"Ping of no object", u"/nowhere"_s, kPeer, u"Ping"_s, {}},
        {"the report", kPath, kReport, u"Diagnose"_s, {}},
    };
    const std::vector<std::pair<QByteArray, QString>> actions {
        {"no action", u""_s},
        {"another action", u"dance"_s},
        {"an action in capitals", u"SETTINGS"_s},
        {"an action and a line feed", u"settings\n"_s},
        {"an action and an option", u"open-ad --profile /"_s},
        {"an action with a mark in it", u"open\u202e-ad"_s},
        {"an action of a megabyte", megabyte()},
    };
    for (const auto& [name, action] : actions)
        calls.append(
            {name, kPath, kApplication, u"ActivateAction"_s, {action, QVariantList {nested(), 7}, QVariantMap()}});
    for (const auto& [name, platform] : platforms())
        calls.append({"another action " + name, kPath, kApplication, u"ActivateAction"_s,
            {u"dance"_s, QVariantList(), platform}});
    return calls;
}

QList<HostileCall> HostileCall::effective()
{
    QList<HostileCall> calls {
        {"Open of hostile addresses", kPath, kApplication, u"Open"_s,
            {QStringList {u"javascript:alert(1)"_s, u"file:///etc/passwd"_s, u"\x01\n"_s, u""_s, u"--profile=/"_s,
                 u"x; touch /tmp/orvella"_s, megabyte()},
                QVariantMap()}},
        {"an action with parameters", kPath, kApplication, u"ActivateAction"_s,
            {u"settings"_s, QVariantList {nested(), megabyte(), -1}, QVariantMap()}},
        {"Activate without an interface", kPath, {}, u"Activate"_s, {QVariantMap()}},
    };
    for (const auto& member : {u"Activate"_s, u"ContextMenu"_s}) {
        calls.append({member.toUtf8() + " far to the upper left", kItemPath, kItem, member, {kLeast, kLeast}});
        calls.append({member.toUtf8() + " far to the lower right", kItemPath, kItem, member, {kMost, kMost}});
        calls.append({member.toUtf8() + " far to both sides", kItemPath, kItem, member, {kLeast, kMost}});
    }
    for (const auto& [name, platform] : platforms())
        calls.append({"Activate " + name, kPath, kApplication, u"Activate"_s, {platform}});
    return calls;
}

QList<HostileCall> HostileCall::wrong()
{
    auto calls = wrongCallsOfTheApplication();
    calls.append(wrongCallsOfTheItem());
    return calls;
}

} // namespace orvella
