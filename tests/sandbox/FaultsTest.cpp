#include "sandbox/support/Exchange.h"
#include "sandbox/support/ServiceUnderTest.h"

#include <QTest>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

FaultPlan planOf(const QString& specification)
{
    FaultPlan plan;
    if (const auto added = plan.add(specification); !added)
        qFatal("%s", qPrintable(added.error()));
    return plan;
}

} // namespace

class FaultsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aDelayedAnswerIsHeldBackAndNoLonger()
    {
        ServiceUnderTest service({.faults = planOf(u"wallet=delay:5000"_s)});
        const auto device = service.registerDevice();
        Exchange exchange(service.port(), service.request("GET", u"/api/mac/wallet"_s, device.token, {}));
        QTRY_COMPARE(service.clock.sleepers(), 1U);

        service.clock.advance(5s - 1ms);
        QTest::qWait(50);
        QVERIFY(exchange.received().isEmpty());
        service.clock.advance(1ms);

        QCOMPARE(exchange.answer().status, 200);
        QCOMPARE(service.clock.sleepers(), 0U);
    }

    void aDelayedAnswerToAClientThatIsGoneIsDropped()
    {
        ServiceUnderTest service({.faults = planOf(u"wallet=delay:5000"_s)});
        const auto device = service.registerDevice();
        {
            const Exchange exchange(service.port(), service.request("GET", u"/api/mac/wallet"_s, device.token, {}));
            QTRY_COMPARE(service.clock.sleepers(), 1U);
        }
        QTest::qWait(50);

        service.clock.advance(5s);

        QCOMPARE(service.clock.sleepers(), 0U);
    }

    void aServiceThatEndsDropsItsDelayedAnswers()
    {
        FakeClock clock;
        auto service = *Service::start({.faults = planOf(u"all=delay:5000"_s)}, clock, Moment(), [](const QString&) {});
        const auto port = service->origin().section(u':', -1);
        Exchange exchange(
            port.toUShort(), "GET /api/mac/wallet HTTP/1.1\r\nhost: 127.0.0.1:" + port.toLatin1() + "\r\n\r\n");
        QTRY_COMPARE(clock.sleepers(), 1U);

        service.reset();

        QCOMPARE(clock.sleepers(), 0U);
        QCOMPARE(exchange.answer().status, 0);
    }

    void aStatusIsAnsweredAndTheCallIsNotCarriedOut()
    {
        ServiceUnderTest service({.faults = planOf(u"register=status:503"_s)});

        const auto answer = service.post(u"/api/mac/device/register"_s, {});

        QCOMPARE(answer.status, 503);
        QCOMPARE(answer.error(), u"the service was told to fail"_s);
        QVERIFY(service.lines.isEmpty());
    }

    void aStatusWithoutABodyHasNone()
    {
        const ServiceUnderTest service({.faults = planOf(u"all=status:204"_s)});

        const auto answer = service.get(u"/api/mac/wallet"_s);

        QCOMPARE(answer.status, 204);
        QVERIFY(answer.body.isEmpty());
        QVERIFY(!answer.headers.contains("content-length"));
    }

    void aRedirectLeadsSomewhere()
    {
        const ServiceUnderTest service({.faults = planOf(u"all=status:302"_s)});

        const auto answer = service.get(u"/api/mac/wallet"_s);

        QCOMPARE(answer.status, 302);
        QCOMPARE(answer.headers.value("location"), "/viewer");
    }

    void aResetCutsTheConnectionAfterTheCall()
    {
        ServiceUnderTest service({.faults = planOf(u"complete=reset"_s)});
        const auto device = service.registerDevice();
        const auto session = service.start(device.token);
        service.clock.advance(10s);

        const auto answer = service.post(
            u"/api/mac/ads/session/complete"_s, {{u"sessionId"_s, text(session, u"sessionId"_s)}}, device.token);

        QCOMPARE(answer.status, 0);
        QVERIFY(answer.wasReset);
        const auto wallet = object(service.get(u"/api/mac/wallet"_s, device.token).data(), u"wallet"_s);
        QCOMPARE(integer(wallet, u"lifetimeCents"_s), 2);
    }

    void garbageIsASuccessThatIsNotJson()
    {
        const ServiceUnderTest service({.faults = planOf(u"wallet=garbage"_s)});

        const auto answer = service.get(u"/api/mac/wallet"_s);

        QCOMPARE(answer.status, 200);
        QVERIFY(!answer.body.isEmpty());
        QVERIFY(!Json::parse(answer.body));
    }

    void aTruncatedAnswerEndsInTheMiddle()
    {
        const ServiceUnderTest service({.faults = planOf(u"wallet=truncated"_s)});
        const auto device = service.registerDevice();

        const auto answer = service.get(u"/api/mac/wallet"_s, device.token);

        QCOMPARE(answer.status, 200);
        QVERIFY(!answer.wasReset);
        const auto promised = answer.headers.value("content-length").toLongLong();
        QVERIFY(promised > 0);
        QCOMPARE(answer.body.size(), promised / 2);
        QVERIFY(!Json::parse(answer.body));
    }

    void thePagesAreNeverSpoiled()
    {
        const ServiceUnderTest service({.faults = planOf(u"all=reset"_s)});

        QCOMPARE(service.get(u"/viewer"_s).status, 200);
    }
};

QTEST_GUILESS_MAIN(FaultsTest)

#include "FaultsTest.moc"
