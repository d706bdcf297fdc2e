#include "sandbox/support/Exchange.h"
#include "sandbox/support/ServiceUnderTest.h"

#include <QTest>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

Json::Object changed(Json::Object body, const QString& name, Json value)
{
    body.insert_or_assign(name, std::move(value));
    return body;
}

Json::Object without(Json::Object body, const QString& name)
{
    body.erase(name);
    return body;
}

} // namespace

class RefusalsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void everyAuthorizedCallNeedsAGoodToken()
    {
        const auto device = m_service.registerDevice();
        for (const auto& route : kCallRoutes) {
            if (!route.isAuthorized)
                continue;
            const auto method = route.isPost ? "POST" : "GET";
            const auto withHeader = [&](const QByteArray& header) {
                auto bytes = m_service.request(method, route.path.toString(), {}, "{}");
                if (!route.isPost)
                    bytes.chop(2);
                return m_service.send(bytes.replace("\r\n\r\n", "\r\n" + header + "\r\n"));
            };
            for (const auto& header :
                {QByteArray(), QByteArray("authorization: Bearer \r\n"), QByteArray("authorization: Bearer wrong\r\n"),
                    "authorization: bearer " + device.token.toLatin1() + "\r\n",
                    "authorization: Bearer " + device.token.toLatin1().toLower() + "\r\n"}) {
                const auto answer = withHeader(header + (route.isPost ? "\r\n" : "\r\n"));
                QCOMPARE(answer.status, 401);
                QCOMPARE(answer.error(), u"the token is missing or unknown"_s);
                QCOMPARE(answer.headers.value("www-authenticate"), "Bearer");
            }
        }
    }

    void everyCallTakesOnlyItsOwnMethod()
    {
        const auto device = m_service.registerDevice();
        for (const auto& route : kCallRoutes) {
            for (const auto& method : {QByteArray(route.isPost ? "GET" : "POST"), QByteArray("PUT"),
                     QByteArray("DELETE"), QByteArray("OPTIONS")}) {
                const auto answer =
                    m_service.send(m_service.request(method, route.path.toString(), device.token, "{}"));
                QCOMPARE(answer.status, 405);
                QCOMPARE(answer.headers.value("allow"), route.isPost ? "POST" : "GET");
            }
        }
    }

    void anUnknownPathIsNotFound()
    {
        const auto device = m_service.registerDevice();
        for (const auto& unknown : {u"/api/mac/"_s, u"/api/mac/wallet/"_s, u"/api/mac/Wallet"_s, u"/api/mac"_s,
                 u"/api/"_s, u"//api/mac/wallet"_s}) {
            const auto answer = m_service.get(unknown, device.token);
            QCOMPARE(answer.status, 404);
        }
        QCOMPARE(m_service.get(u"/api/mac/nothing"_s, device.token).error(), u"there is no such call"_s);
    }

    void aBodyThatIsNotWhatTheCallNeedsIsRefusedWithAReason_data()
    {
        QTest::addColumn<QString>("path");
        QTest::addColumn<Json::Object>("body");
        QTest::addColumn<QString>("expected");

        const auto row = [](const char* name, Call call, Json::Object body, const QString& expected) {
            QTest::newRow(name) << pathOf(call) << std::move(body) << expected;
        };
        for (const auto& [name, value] : registrationBody()) {
            row(qPrintable(u"registration without "_s + name), Call::registration, without(registrationBody(), name),
                name + u" is missing"_s);
        }
        row("registration with more", Call::registration, changed(registrationBody(), u"osVersion"_s, u"12"_s),
            u"osVersion is not expected"_s);
        row("a name that is a number", Call::registration, changed(registrationBody(), u"deviceName"_s, qint64 {1}),
            u"deviceName is not a text"_s);
        row("an empty name", Call::registration, changed(registrationBody(), u"deviceName"_s, u""_s),
            u"deviceName is empty"_s);
        row("a name that is too long", Call::registration,
            changed(registrationBody(), u"deviceName"_s, QString(201, u'x')),
            u"deviceName is longer than 200 characters"_s);
        row("a language with a country", Call::registration, changed(registrationBody(), u"language"_s, u"en_US"_s),
            u"language is not a language code"_s);
        row("a setting that is a number", Call::preferences, changed(anonymousSettings(), u"autoOpenAds"_s, qint64 {1}),
            u"autoOpenAds is neither true nor false"_s);
        row("a setting that is null", Call::preferences, changed(anonymousSettings(), u"autoOpenAds"_s, Json()),
            u"autoOpenAds is neither true nor false"_s);
        row("preferences with more", Call::preferences, changed(anonymousSettings(), u"ageConfirmed"_s, true),
            u"ageConfirmed is not expected"_s);
        row("heartbeat without a count", Call::heartbeat, pollBody(anonymousSettings(), u"en"_s),
            u"rawAppCount is missing"_s);
        row("a count that is not integral", Call::heartbeat,
            changed(heartbeatBody(sharingSettings(), {}, 0), u"rawAppCount"_s, 1.5),
            u"rawAppCount is not an integer"_s);
        row("a negative count", Call::heartbeat, heartbeatBody(sharingSettings(), {}, -1),
            u"rawAppCount is not within 0 and 100000"_s);
        row("categories of an anonymous viewer", Call::heartbeat,
            heartbeatBody(changed(sharingSettings(), u"anonymousMode"_s, true), {u"ai_tools"_s}, 1),
            u"categories is not empty although the viewer does not share them"_s);
        row("a count of an anonymous viewer", Call::heartbeat, heartbeatBody(anonymousSettings(), {}, 1),
            u"rawAppCount is not 0 although the viewer does not share categories"_s);
        row("categories of no application", Call::heartbeat, heartbeatBody(sharingSettings(), {u"ai_tools"_s}, 0),
            u"rawAppCount is 0 although there are categories"_s);
        row("categories without consent", Call::available,
            pollBody(changed(sharingSettings(), u"appSignalConsent"_s, false), u"en"_s, {u"ai_tools"_s}),
            u"categories is not empty although the viewer does not share them"_s);
        row("an unknown category", Call::available, pollBody(sharingSettings(), u"en"_s, {u"com.example.app"_s}),
            u"categories holds an unknown category"_s);
        row("unsorted categories", Call::available,
            pollBody(sharingSettings(), u"en"_s, {u"design_tools"_s, u"ai_tools"_s}),
            u"categories is not sorted, each category once"_s);
        row("categories that are no texts", Call::available,
            changed(pollBody(sharingSettings(), u"en"_s), u"categories"_s, Json::Array {Json(true)}),
            u"categories holds something that is not a text"_s);
        row("a poll with a count", Call::available, heartbeatBody(sharingSettings(), {}, 0),
            u"rawAppCount is not expected"_s);
        row("completion without a session", Call::complete, {}, u"sessionId is missing"_s);
        row("completion of no session", Call::complete, {{u"sessionId"_s, u""_s}}, u"sessionId is empty"_s);
        row("a click with more", Call::click, {{u"sessionId"_s, u"s"_s}, {u"url"_s, u"x"_s}}, u"url is not expected"_s);
    }

    void aBodyThatIsNotWhatTheCallNeedsIsRefusedWithAReason()
    {
        QFETCH(QString, path);
        QFETCH(Json::Object, body);
        QFETCH(QString, expected);
        const auto isRegistration = path == pathOf(Call::registration);
        const auto token = isRegistration ? QString() : m_service.registerDevice().token;

        const auto answer = m_service.post(path, body, token);

        QCOMPARE(answer.status, 400);
        QCOMPARE(answer.error(), expected);
    }

    void aBodyThatIsNotAnObjectIsRefused()
    {
        const auto device = m_service.registerDevice();
        for (const auto& [body, expected] :
            {std::pair(QByteArray("{"), u"the body is not JSON"_s), std::pair(QByteArray(), u"the body is not JSON"_s),
                std::pair(QByteArray("{\"a\":\"\xFF\"}"), u"the body is not JSON"_s),
                std::pair(QByteArray("[]"), u"the text is not an object"_s),
                std::pair(QByteArray("null"), u"the text is not an object"_s)}) {
            const auto answer =
                m_service.send(m_service.request("POST", pathOf(Call::preferences), device.token, body));
            QCOMPARE(answer.status, 400);
            QCOMPARE(answer.error(), expected);
        }
    }

    void whatTheClientNeverSendsWithABodyIsRefused()
    {
        const auto device = m_service.registerDevice();
        const auto body = Json(anonymousSettings()).serialise().value_or(QByteArray());
        const auto wrongType = m_service.request("POST", pathOf(Call::preferences), device.token, body, "text/plain");
        const auto query = m_service.request("POST", pathOf(Call::preferences) + u"?a=b"_s, device.token, body);
        const auto authorized = m_service.request("POST", pathOf(Call::registration), device.token, body);
        auto typedGet = m_service.request("GET", pathOf(Call::wallet), device.token, {});
        typedGet.chop(2);
        typedGet += "content-type: application/json\r\n\r\n";

        QCOMPARE(m_service.send(wrongType).status, 415);
        QCOMPARE(m_service.send(query).error(), u"the call has no query"_s);
        QCOMPARE(m_service.send(authorized).error(), u"the call is made without a token"_s);
        QCOMPARE(m_service.send(typedGet).error(), u"the call has no body"_s);
    }

    void aSessionIsStartedOnlyForWhatWasOffered_data()
    {
        QTest::addColumn<QString>("name");
        QTest::addColumn<Json>("value");
        QTest::addColumn<int>("status");
        QTest::addColumn<QString>("expected");

        QTest::newRow("campaign") << u"campaignId"_s << Json(u"nobody"_s) << 404 << u"there is no such campaign"_s;
        QTest::newRow("creative") << u"creativeId"_s << Json(u"brightleaf-hosting-en"_s) << 404
                                  << u"the campaign has no such creative"_s;
        QTest::newRow("another creative")
            << u"creativeId"_s << Json(u"northwind-coffee-de"_s) << 400 << u"language is not the language of the ad"_s;
        QTest::newRow("language") << u"language"_s << Json(u"de"_s) << 400
                                  << u"language is not the language of the ad"_s;
        QTest::newRow("categories") << u"matchedCategories"_s << Json(Json::Array {Json(u"ai_tools"_s)}) << 400
                                    << u"matchedCategories is not what was offered"_s;
    }

    void aSessionIsStartedOnlyForWhatWasOffered()
    {
        QFETCH(QString, name);
        QFETCH(Json, value);
        QFETCH(int, status);
        QFETCH(QString, expected);
        const auto device = m_service.registerDevice();
        const auto body = startBody(m_service.offer(device.token));

        const auto answer = m_service.post(pathOf(Call::start), changed(body, name, value), device.token);

        QCOMPARE(answer.status, status);
        QCOMPARE(answer.error(), expected);
    }

    void anAdThatWasOfferedToAnotherDeviceCannotBeStarted()
    {
        const auto device = m_service.registerDevice();
        const auto other = m_service.registerDevice();
        const auto body = startBody(m_service.offer(device.token));

        const auto answer = m_service.post(pathOf(Call::start), body, other.token);

        QCOMPARE(answer.status, 409);
        QCOMPARE(answer.error(), u"the ad was not offered to this device"_s);
    }

    void aSessionOfAnotherDeviceIsRefused()
    {
        const auto device = m_service.registerDevice();
        const auto other = m_service.registerDevice();
        const auto sessionId = text(m_service.start(device.token), u"sessionId"_s);
        m_service.clock.advance(10s);

        for (const auto call : {Call::complete, Call::click}) {
            const auto answer = m_service.post(pathOf(call), {{u"sessionId"_s, sessionId}}, other.token);
            QCOMPARE(answer.status, 404);
            QCOMPARE(answer.error(), u"the device has no such session"_s);
        }
    }

    void aRequestThatIsTooLargeIsRefused_data()
    {
        QTest::addColumn<qsizetype>("size");

        QTest::newRow("a little too large") << qsizetype {65 * 1024};
        QTest::newRow("far too large") << qsizetype {8 * 1024 * 1024};
    }

    void aRequestThatIsTooLargeIsRefused()
    {
        QFETCH(qsizetype, size);
        const auto bytes = m_service.request("POST", pathOf(Call::preferences), {}, '"' + QByteArray(size, 'x') + '"');
        Exchange exchange(m_service.port(), bytes);

        QVERIFY(QTest::qWaitFor([&exchange] { return exchange.received().contains("\r\n\r\n"); }));

        const auto answer = HttpAnswer::parse(exchange.received());
        QCOMPARE(answer.status, 413);
        QCOMPARE(answer.error(), u"the request is too large"_s);
    }

    void aRequestForAnotherHostIsRefused()
    {
        auto bytes = m_service.request("GET", u"/viewer"_s, {}, {});
        bytes.replace("127.0.0.1", "orvella.example");

        QCOMPARE(m_service.send(bytes).status, 421);
    }

private:
    ServiceUnderTest m_service;
};

QTEST_GUILESS_MAIN(RefusalsTest)

#include "RefusalsTest.moc"
