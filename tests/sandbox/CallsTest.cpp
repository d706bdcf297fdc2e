#include "sandbox/support/Exchange.h"
#include "sandbox/support/ServiceUnderTest.h"

#include <QRegularExpression>
#include <QTcpSocket>
#include <QTest>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

QStringList names(const Json::Object& object)
{
    QStringList result;
    for (const auto& [name, value] : object)
        result.append(name);
    return result;
}

} // namespace

class CallsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void registrationAnswersEverythingThatADeviceNeeds()
    {
        const auto answer = m_service.post(pathOf(Call::registration), registrationBody());

        QCOMPARE(answer.status, 200);
        QCOMPARE(answer.headers.value("content-type"), "application/json");
        const auto data = answer.data();
        QCOMPARE(names(data),
            QStringList(
                {u"activationCode"_s, u"deviceId"_s, u"deviceToken"_s, u"pollSeconds"_s, u"verificationUri"_s}));
        QCOMPARE(text(data, u"verificationUri"_s),
            m_service.service().origin() + u"/activate?code="_s + text(data, u"activationCode"_s));
        QCOMPARE(integer(data, u"pollSeconds"_s), 60);
        const auto line = u"desk registered; link it at "_s + text(data, u"verificationUri"_s);
        QCOMPARE(m_service.lines.last(), line);
    }

    void theLinesNeverShowATokenAndCannotSteerATerminal()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice(u"a\u001B[2Jb\nc"_s);
        service.view(device.token);
        QCOMPARE(service.submit(u"/activate"_s, "code=" + device.code.toLatin1()).status, 303);

        QCOMPARE(service.lines.size(), 3);
        QCOMPARE(service.lines[0],
            u"a\uFFFD[2Jb\uFFFDc registered; link it at %1/activate?code=%2"_s.arg(
                service.service().origin(), device.code));
        QCOMPARE(service.lines[1], u"a\uFFFD[2Jb\uFFFDc earned $0.021"_s);
        QCOMPARE(service.lines[2], u"a\uFFFD[2Jb\uFFFDc linked to viewer demo"_s);
        QVERIFY(!service.lines.join(u'\n').contains(device.token));
    }

    void heartbeatAndPreferencesAnswerAnEmptyRecord()
    {
        const auto device = m_service.registerDevice();

        const auto heartbeat =
            m_service.post(pathOf(Call::heartbeat), heartbeatBody(anonymousSettings(), {}, 0), device.token);
        const auto preferences = m_service.post(pathOf(Call::preferences), sharingSettings(), device.token);

        QCOMPARE(heartbeat.body, R"({"data":{},"ok":true})");
        QCOMPARE(preferences.body, R"({"data":{},"ok":true})");
    }

    void anOfferHasAllFourteenFields()
    {
        const auto device = m_service.registerDevice();

        const auto answer = m_service.post(
            pathOf(Call::available), pollBody(sharingSettings(), u"de"_s, {u"developer_tools"_s}), device.token);

        const auto data = answer.data();
        QCOMPARE(data.at(u"available"_s), Json(true));
        QCOMPARE(integer(data, u"pollSeconds"_s), 60);
        const auto ad = object(data, u"ad"_s);
        QCOMPARE(ad.size(), 14U);
        QCOMPARE(text(ad, u"campaignId"_s), u"northwind-coffee"_s);
        QCOMPARE(text(ad, u"creativeId"_s), u"northwind-coffee-de"_s);
        QCOMPARE(text(ad, u"advertiserName"_s), u"Northwind Coffee"_s);
        QCOMPARE(text(ad, u"body"_s), u"Kaffee, erst gestern geröstet und heute bei Ihnen."_s);
        QCOMPARE(text(ad, u"ctaLabel"_s), u"Jetzt probieren"_s);
        QCOMPARE(text(ad, u"targetUrl"_s), m_service.service().origin() + u"/advertiser/northwind-coffee"_s);
        QCOMPARE(text(ad, u"language"_s), u"de"_s);
        QCOMPARE(integer(ad, u"requiredSeconds"_s), 10);
        QVERIFY(ad.at(u"matchedCategories"_s).array()->empty());
        QCOMPARE(integer(ad, u"advertiserChargeCents"_s), 3);
        QCOMPARE(integer(ad, u"viewerEarnCents"_s), 2);
        QCOMPARE(integer(ad, u"platformFeeCents"_s), 0);
        QCOMPARE(ad.at(u"viewerEarnCentsExact"_s).number(), std::optional(2.1));
        QCOMPARE(ad.at(u"platformFeeCentsExact"_s).number(), std::optional(0.9));
    }

    void aViewerWhoSharesCategoriesIsOfferedWhatMatches()
    {
        const auto device = m_service.registerDevice();
        m_service.view(device.token);

        const auto answer = m_service.post(
            pathOf(Call::available), pollBody(sharingSettings(), u"en"_s, {u"developer_tools"_s}), device.token);

        const auto ad = object(answer.data(), u"ad"_s);
        QCOMPARE(text(ad, u"campaignId"_s), u"brightleaf-hosting"_s);
        QCOMPARE(*ad.at(u"matchedCategories"_s).array(), Json::Array {Json(u"developer_tools"_s)});
    }

    void anAnonymousViewerIsOfferedOnlyWhatIsForEveryone()
    {
        const auto device = m_service.registerDevice();
        const auto campaigns = Campaigns::seeded();
        QSet<QString> seen;
        for (int round = 0; round < 6; ++round) {
            const auto ad = m_service.offer(device.token);
            seen.insert(text(ad, u"campaignId"_s));
            QVERIFY(campaigns.find(text(ad, u"campaignId"_s))->categories.isEmpty());
            QVERIFY(ad.at(u"matchedCategories"_s).array()->empty());
            m_service.view(device.token);
        }

        QCOMPARE(seen, QSet<QString>({u"northwind-coffee"_s, u"harbour-museum"_s}));
    }

    void nothingIsOfferedWhereNothingFits()
    {
        const ServiceUnderTest service({.campaigns = *Campaigns::parse(R"({"campaigns":[]})"), .pollSeconds = 90});
        const auto device = service.registerDevice();

        const auto answer = service.post(pathOf(Call::available), pollBody(anonymousSettings(), u"en"_s), device.token);

        QCOMPARE(answer.body, R"({"data":{"available":false,"pollSeconds":90},"ok":true})");
    }

    void oneAdFromOfferToWallet()
    {
        const auto device = m_service.registerDevice();
        const auto session = m_service.start(device.token);
        QCOMPARE(session.size(), 5U);
        QVERIFY(!text(session, u"sessionId"_s).isEmpty());
        QCOMPARE(integer(session, u"requiredSeconds"_s), 10);
        QVERIFY(QRegularExpression(u"\\A2026-\\d\\d-\\d\\dT\\d\\d:\\d\\d:\\d\\d\\.\\d{3}Z\\z"_s)
                .match(text(session, u"eligibleAfter"_s))
                .hasMatch());
        QCOMPARE(text(session, u"targetUrl"_s), m_service.service().origin() + u"/advertiser/northwind-coffee"_s);
        QCOMPARE(integer(session, u"viewerEarnCents"_s), 2);
        const Json::Object body {{u"sessionId"_s, text(session, u"sessionId"_s)}};

        m_service.clock.advance(9s);
        const auto early = m_service.post(pathOf(Call::complete), body, device.token).data();
        m_service.clock.advance(1s);
        const auto completed = m_service.post(pathOf(Call::complete), body, device.token);
        const auto again = m_service.post(pathOf(Call::complete), body, device.token);

        QCOMPARE(early.at(u"completed"_s), Json(false));
        QCOMPARE(text(early, u"reason"_s), u"The ad must stay in view for 1 more second."_s);
        QCOMPARE(integer(early, u"viewerEarnCents"_s), 0);
        QCOMPARE(completed.body,
            R"({"data":{"advertiserChargeCents":3,"completed":true,"platformFeeCents":0,"platformFeeCentsExact":0.9,)"
            R"("reason":"credited","viewerEarnCents":2,"viewerEarnCentsExact":2.1},"ok":true})");
        QCOMPARE(again.body, completed.body);
        QCOMPARE(m_service.get(pathOf(Call::wallet), device.token).body,
            R"({"data":{"linked":false,"wallet":{"availableCents":0,"lifetimeCents":2,"paidCents":0,)"
            R"("pendingCents":2}},"ok":true})");
    }

    void aClickAnswersThePageThatItLeadsTo()
    {
        const auto device = m_service.registerDevice();
        const auto session = m_service.start(device.token);

        const auto data =
            m_service.post(pathOf(Call::click), {{u"sessionId"_s, text(session, u"sessionId"_s)}}, device.token).data();

        QCOMPARE(names(data), QStringList {u"targetUrl"_s});
        const auto target = text(data, u"targetUrl"_s);
        QVERIFY(target.startsWith(m_service.service().origin()));
        const auto page = m_service.get(target.sliced(m_service.service().origin().size()));
        QCOMPARE(page.status, 200);
        QVERIFY(page.body.contains("Northwind Coffee"));
    }

    void linkingMakesWhatIsPendingAvailable()
    {
        ServiceUnderTest service;
        const auto device = service.registerDevice();
        service.view(device.token);

        QCOMPARE(service.submit(u"/activate"_s, "code=" + device.code.toLatin1()).status, 303);

        QCOMPARE(service.get(pathOf(Call::wallet), device.token).body,
            R"({"data":{"linked":true,"wallet":{"availableCents":2,"lifetimeCents":2,"paidCents":0,)"
            R"("pendingCents":0}},"ok":true})");
    }

    void onlyOneRequestIsTakenFromAConnection()
    {
        const auto device = m_service.registerDevice();
        const auto bytes = m_service.request("GET", pathOf(Call::wallet), device.token, {});
        Exchange exchange(m_service.port(), bytes + bytes);

        const auto answer = exchange.answer();

        QCOMPARE(answer.headers.value("connection"), "close");
        QCOMPARE(exchange.received().count("HTTP/1.1 200"), 1);
    }

    void theServiceIsReachedOnLoopbackOnly()
    {
        QVERIFY(m_service.service().origin().startsWith(u"http://127.0.0.1:"_s));
        // Another address of the loopback network stands for any other interface of the machine.
        QTcpSocket socket;
        socket.connectToHost(u"127.0.0.2"_s, m_service.port());
        QVERIFY(!socket.waitForConnected(1000));
    }

private:
    ServiceUnderTest m_service;
};

QTEST_GUILESS_MAIN(CallsTest)

#include "CallsTest.moc"
