#include "sandbox/CallBody.h"

#include "sandbox/StrictObject.h"

#include <QRegularExpression>

namespace orvella::sandbox::CallBody {

using namespace Qt::Literals::StringLiterals;

namespace {

constexpr qint64 kMostApplications = 100'000;
constexpr qsizetype kLongestVersion = 64;

template <class T> std::expected<T, QString> unlessProblem(T value, const QString& problem)
{
    if (!problem.isEmpty())
        return std::unexpected(problem);
    return value;
}

PrivacySettings settings(StrictObject& object)
{
    return {
        object.boolean(u"anonymousMode"_s),
        object.boolean(u"appSignalConsent"_s),
        object.boolean(u"autoOpenAds"_s),
    };
}

QString language(StrictObject& object)
{
    // ISO 639, two or three letters.
    static const QRegularExpression kCode(u"\\A[a-z]{2,3}\\z"_s);
    const auto code = object.text(u"language"_s);
    if (!kCode.match(code).hasMatch())
        object.complain(u"language is not a language code"_s);
    return code;
}

/// Settings, language and categories, as heartbeat and availability share them.
void readSignals(StrictObject& object, Device& device)
{
    device.settings = settings(object);
    device.language = language(object);
    device.categories = object.categories(u"categories"_s);
    if (!device.settings.allowsCategories() && !device.categories.isEmpty())
        object.complain(u"categories is not empty although the viewer does not share them"_s);
}

} // namespace

std::expected<Device, QString> registration(const Json& body)
{
    QString problem;
    StrictObject object(body, {}, problem);
    Device device;
    device.name = object.text(u"deviceName"_s);
    device.appVersion = object.text(u"appVersion"_s, kLongestVersion);
    device.settings = settings(object);
    device.language = language(object);
    object.end();
    return unlessProblem(device, problem);
}

QString heartbeat(const Json& body, Device& device)
{
    QString problem;
    StrictObject object(body, {}, problem);
    readSignals(object, device);
    const auto count = object.integer(u"rawAppCount"_s, 0, kMostApplications);
    if (!device.settings.allowsCategories() && count != 0)
        object.complain(u"rawAppCount is not 0 although the viewer does not share categories"_s);
    if (!device.categories.isEmpty() && count == 0)
        object.complain(u"rawAppCount is 0 although there are categories"_s);
    object.end();
    return problem;
}

QString availability(const Json& body, Device& device)
{
    QString problem;
    StrictObject object(body, {}, problem);
    readSignals(object, device);
    object.end();
    return problem;
}

QString preferences(const Json& body, Device& device)
{
    QString problem;
    StrictObject object(body, {}, problem);
    device.settings = settings(object);
    object.end();
    // What was shared before is forgotten with the consent.
    if (!device.settings.allowsCategories())
        device.categories.clear();
    return problem;
}

std::expected<Start, QString> start(const Json& body)
{
    QString problem;
    StrictObject object(body, {}, problem);
    Start start;
    start.campaignId = object.text(u"campaignId"_s);
    start.creativeId = object.text(u"creativeId"_s);
    start.anonymousMode = object.boolean(u"anonymousMode"_s);
    start.language = language(object);
    start.matchedCategories = object.categories(u"matchedCategories"_s);
    object.end();
    return unlessProblem(start, problem);
}

std::expected<QString, QString> session(const Json& body)
{
    QString problem;
    StrictObject object(body, {}, problem);
    const auto sessionId = object.text(u"sessionId"_s);
    object.end();
    return unlessProblem(sessionId, problem);
}

} // namespace orvella::sandbox::CallBody
