#include "sandbox/support/ServiceUnderTest.h"

#include "sandbox/support/Exchange.h"

#include <QUrl>

#include <algorithm>

namespace orvella::sandbox {

using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

// 2026-05-01T12:00:00Z
constexpr auto kStart = Moment(1'777'636'800'000ms);

} // namespace

ServiceUnderTest::ServiceUnderTest(Service::Setup setup)
{
    auto service = Service::start(std::move(setup), clock, kStart, [this](const QString& line) { lines.append(line); });
    if (!service)
        qFatal("The service did not start: %s", qUtf8Printable(service.error().description));
    m_service = *std::move(service);
}

QByteArray ServiceUnderTest::request(const QByteArray& method, const QString& path, const QString& token,
    const QByteArray& body, const QByteArray& contentType) const
{
    auto bytes = method + ' ' + path.toUtf8() + " HTTP/1.1\r\nhost: 127.0.0.1:" + QByteArray::number(port()) + "\r\n";
    if (!token.isEmpty())
        bytes += "authorization: Bearer " + token.toLatin1() + "\r\n";
    if (method == "POST")
        bytes += "content-type: " + contentType + "\r\ncontent-length: " + QByteArray::number(body.size()) + "\r\n";
    return bytes + "\r\n" + body;
}

HttpAnswer ServiceUnderTest::send(const QByteArray& bytes) const
{
    return Exchange(port(), bytes).answer();
}

HttpAnswer ServiceUnderTest::post(const QString& path, Json::Object body, const QString& token) const
{
    return send(request("POST", path, token, Json(std::move(body)).serialise().value_or(QByteArray())));
}

HttpAnswer ServiceUnderTest::get(const QString& path, const QString& token) const
{
    return send(request("GET", path, token, {}));
}

HttpAnswer ServiceUnderTest::submit(const QString& path, const QByteArray& form) const
{
    return send(request("POST", path, {}, form, "application/x-www-form-urlencoded"));
}

ServiceUnderTest::Registered ServiceUnderTest::registerDevice(const QString& name) const
{
    const auto data = post(pathOf(Call::registration), registrationBody(name)).data();
    return {text(data, u"deviceId"_s), text(data, u"deviceToken"_s), text(data, u"activationCode"_s)};
}

Json::Object ServiceUnderTest::offer(const QString& token) const
{
    const auto answer = post(u"/api/mac/ads/available"_s, pollBody(anonymousSettings(), u"en"_s), token);
    return object(answer.data(), u"ad"_s);
}

Json::Object ServiceUnderTest::start(const QString& token) const
{
    return post(u"/api/mac/ads/session/start"_s, startBody(offer(token)), token).data();
}

Json::Object ServiceUnderTest::view(const QString& token)
{
    const auto session = start(token);
    clock.advance(std::chrono::seconds(integer(session, u"requiredSeconds"_s)));
    return post(u"/api/mac/ads/session/complete"_s, {{u"sessionId"_s, text(session, u"sessionId"_s)}}, token).data();
}

quint16 ServiceUnderTest::port() const
{
    return static_cast<quint16>(QUrl(m_service->origin()).port());
}

QString pathOf(Call call)
{
    return std::ranges::find(kCallRoutes, call, &CallRoute::call)->path.toString();
}

Json::Object registrationBody(const QString& name)
{
    auto body = anonymousSettings();
    body.emplace(u"deviceName"_s, name);
    body.emplace(u"appVersion"_s, u"0.1.0"_s);
    body.emplace(u"language"_s, u"en"_s);
    return body;
}

Json::Object heartbeatBody(Json::Object settings, const QStringList& categories, qint64 count)
{
    auto body = pollBody(std::move(settings), u"en"_s, categories);
    body.emplace(u"rawAppCount"_s, count);
    return body;
}

Json::Object anonymousSettings()
{
    return {{u"anonymousMode"_s, true}, {u"appSignalConsent"_s, false}, {u"autoOpenAds"_s, false}};
}

Json::Object sharingSettings()
{
    return {{u"anonymousMode"_s, false}, {u"appSignalConsent"_s, true}, {u"autoOpenAds"_s, true}};
}

Json::Object pollBody(Json::Object settings, const QString& language, const QStringList& categories)
{
    Json::Array keys;
    for (const auto& category : categories)
        keys.emplace_back(category);
    settings.emplace(u"language"_s, language);
    settings.emplace(u"categories"_s, std::move(keys));
    return settings;
}

Json::Object startBody(const Json::Object& offer)
{
    if (offer.empty())
        qFatal("Nothing is offered.");
    return {
        {u"campaignId"_s, offer.at(u"campaignId"_s)},
        {u"creativeId"_s, offer.at(u"creativeId"_s)},
        {u"language"_s, offer.at(u"language"_s)},
        {u"matchedCategories"_s, offer.at(u"matchedCategories"_s)},
        {u"anonymousMode"_s, true},
    };
}

QString text(const Json::Object& object, const QString& name)
{
    const auto found = object.find(name);
    const auto* const string = found == object.end() ? nullptr : found->second.string();
    return string ? *string : QString();
}

qint64 integer(const Json::Object& object, const QString& name)
{
    const auto found = object.find(name);
    return found == object.end() ? -1 : found->second.integer().value_or(-1);
}

Json::Object object(const Json::Object& object, const QString& name)
{
    const auto found = object.find(name);
    const auto* const value = found == object.end() ? nullptr : found->second.object();
    return value ? *value : Json::Object();
}

} // namespace orvella::sandbox
