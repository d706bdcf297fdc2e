#include "sandbox/Ledger.h"
#include "sandbox/Devices.h"
#include "support/FakeClock.h"

#include <QTest>

using namespace orvella;
using namespace orvella::sandbox;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

class LedgerTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        m_ledger.reset();
        m_devices.reset();
        m_database = *Database::open({});
        m_database->begin();
        m_devices.emplace(*m_database);
        m_ledger.emplace(*m_database);
        m_time.emplace(m_clock, Moment(1'777'636'800'000ms));
        m_device = m_devices->add({}, m_time->now()).device;
    }

    void cleanup() { QVERIFY(m_database->end()); }

    void aSessionCountsFromItsRequiredSecondsOn()
    {
        const auto session = startSession(m_campaigns.all().front());

        QCOMPARE(session.requiredSeconds, 10);
        QVERIFY(session.eligibleAfter() == session.startedAt + 10s);
        QCOMPARE(isoText(session.eligibleAfter()), u"2026-05-01T12:00:10.000Z"_s);
    }

    void aSessionIsNotCreditedAMillisecondEarly()
    {
        const auto session = startSession(m_campaigns.all().front());
        m_clock.advance(10s - 1ms);

        const auto verdict = m_ledger->complete(m_device.id, session.id, m_time->now());

        QVERIFY(verdict);
        QVERIFY(!verdict->completed);
        QCOMPARE(verdict->reason, u"The ad must stay in view for 1 more second."_s);
        QVERIFY(verdict->viewerEarn == Amount());
        QVERIFY(m_ledger->balancesOfDevice(m_device.id).lifetime == Amount());
    }

    void aSessionIsCreditedAfterItsRequiredSeconds()
    {
        const auto session = startSession(m_campaigns.all().front());
        m_clock.advance(10s);

        const auto verdict = m_ledger->complete(m_device.id, session.id, m_time->now());

        QVERIFY(verdict);
        QVERIFY(verdict->completed);
        QVERIFY(verdict->isNew);
        QCOMPARE(verdict->reason, u"credited"_s);
        QCOMPARE(verdict->viewerEarn.microCents(), 2'100'000);
        QCOMPARE(verdict->platformFee.microCents(), 900'000);
        QCOMPARE(verdict->advertiserCharge.microCents(), 3'000'000);
    }

    void anEarlyCompletionDoesNotSpoilALaterOne()
    {
        const auto session = startSession(m_campaigns.all().front());
        QVERIFY(!m_ledger->complete(m_device.id, session.id, m_time->now())->completed);
        m_clock.advance(10s);

        QVERIFY(m_ledger->complete(m_device.id, session.id, m_time->now())->completed);
    }

    void completingTwiceCreditsOnceAndAnswersTheSame()
    {
        const auto session = startSession(m_campaigns.all().front());
        m_clock.advance(10s);

        const auto first = m_ledger->complete(m_device.id, session.id, m_time->now());
        m_clock.advance(1h);
        const auto second = m_ledger->complete(m_device.id, session.id, m_time->now());

        QVERIFY(second->completed);
        QVERIFY(!second->isNew);
        QCOMPARE(second->reason, first->reason);
        QVERIFY(second->viewerEarn == first->viewerEarn);
        QVERIFY(second->platformFee == first->platformFee);
        QVERIFY(second->advertiserCharge == first->advertiserCharge);
        QVERIFY(m_ledger->balancesOfDevice(m_device.id).lifetime == first->viewerEarn);
    }

    void aSessionWithoutRequiredSecondsIsCreditedAtOnce()
    {
        auto campaign = m_campaigns.all().front();
        campaign.requiredSeconds = 0;

        const auto session = startSession(campaign);

        QVERIFY(m_ledger->complete(m_device.id, session.id, m_time->now())->completed);
    }

    void aSessionOfAnotherDeviceIsRefused()
    {
        const auto other = m_devices->add({}, m_time->now()).device;
        const auto session = startSession(m_campaigns.all().front());
        m_clock.advance(10s);

        QVERIFY(!m_ledger->complete(other.id, session.id, m_time->now()));
        QVERIFY(!m_ledger->click(other.id, session.id));
        QVERIFY(!m_ledger->complete(m_device.id, u"ses_unknown"_s, m_time->now()));
    }

    void aNewSessionReplacesTheOpenOne()
    {
        const auto first = startSession(m_campaigns.all().at(0));
        const auto second = startSession(m_campaigns.all().at(1));
        m_clock.advance(15s);

        const auto replaced = m_ledger->complete(m_device.id, first.id, m_time->now());

        QVERIFY(!replaced->completed);
        QCOMPARE(replaced->reason, u"Another ad was opened on this device."_s);
        QVERIFY(m_ledger->complete(m_device.id, second.id, m_time->now())->completed);
    }

    void aReplacedSessionThatWasCreditedStaysCredited()
    {
        const auto first = startSession(m_campaigns.all().at(0));
        m_clock.advance(10s);
        QVERIFY(m_ledger->complete(m_device.id, first.id, m_time->now())->completed);

        startSession(m_campaigns.all().at(1));

        QVERIFY(m_ledger->complete(m_device.id, first.id, m_time->now())->completed);
    }

    void aCreditUsesTheOfferUp()
    {
        const auto& campaign = m_campaigns.all().front();
        const auto creative = campaign.creatives.front().id;
        m_ledger->offer(m_device.id, creative, {u"ai_tools"_s, u"productivity"_s});
        const auto session = startSession(campaign);
        QCOMPARE(m_ledger->offered(m_device.id, creative), (QStringList {u"ai_tools"_s, u"productivity"_s}));

        m_clock.advance(10s);
        QVERIFY(m_ledger->complete(m_device.id, session.id, m_time->now())->completed);

        QVERIFY(!m_ledger->offered(m_device.id, creative));
    }

    void fractionsAddUpExactly()
    {
        const auto* const campaign = m_campaigns.find(u"harbour-museum"_s);
        QCOMPARE(campaign->viewerEarn.microCents(), 1'333'333);
        for (int view = 0; view < 30; ++view) {
            const auto session = startSession(*campaign);
            m_clock.advance(15s);
            QVERIFY(m_ledger->complete(m_device.id, session.id, m_time->now())->completed);
        }

        const auto balances = m_ledger->balancesOfDevice(m_device.id);
        QCOMPARE(balances.lifetime.microCents(), 39'999'990);
        QCOMPARE(balances.lifetime.wholeCents(), 39);
        QCOMPARE(balances.lifetime.dollars(), u"$0.3999999"_s);
    }

    void whatADeviceEarnsIsPendingUntilItIsLinked()
    {
        earn(m_device);

        const auto before = m_ledger->balancesOfDevice(m_device.id);
        QCOMPARE(before.pending.microCents(), 2'100'000);
        QCOMPARE(before.available.microCents(), 0);
        QCOMPARE(before.lifetime.microCents(), 2'100'000);
        QCOMPARE(m_ledger->balancesOfViewer(u"demo"_s).lifetime.microCents(), 0);

        std::ignore = m_devices->link(m_device.activationCode, u"demo"_s, m_time->now());
        earn(m_device);

        const auto after = m_ledger->balancesOfViewer(u"demo"_s);
        QCOMPARE(after.pending.microCents(), 0);
        QCOMPARE(after.available.microCents(), 4'200'000);
        QCOMPARE(after.paid.microCents(), 0);
        QCOMPARE(after.lifetime.microCents(), 4'200'000);
    }

    void anAccountHoldsWhatAllItsDevicesEarn()
    {
        const auto second = m_devices->add({}, m_time->now()).device;
        const auto stranger = m_devices->add({}, m_time->now()).device;
        for (const auto& device : {m_device, second, stranger})
            earn(device);

        std::ignore = m_devices->link(m_device.activationCode, u"demo"_s, m_time->now());
        std::ignore = m_devices->link(second.activationCode, u"demo"_s, m_time->now());

        QCOMPARE(m_ledger->balancesOfViewer(u"demo"_s).available.microCents(), 4'200'000);
        QCOMPARE(m_ledger->balancesOfDevice(stranger.id).pending.microCents(), 2'100'000);
    }

    void theHistoryOrdersViewsOfTheSameMillisecond()
    {
        auto first = m_campaigns.all().at(0);
        auto second = m_campaigns.all().at(1);
        first.requiredSeconds = 0;
        second.requiredSeconds = 0;
        for (const auto& campaign : {second, first}) {
            const auto session = startSession(campaign);
            QVERIFY(m_ledger->complete(m_device.id, session.id, m_time->now())->completed);
        }

        const auto history = m_ledger->history(m_device.id);

        QVERIFY(history.lastCreditOfCampaign.value(first.id) > history.lastCreditOfCampaign.value(second.id));
        QVERIFY(history.lastCreditOfCampaign.value(second.id) > 0);
        QVERIFY(history.lastStartOfCampaign.value(first.id) > history.lastStartOfCampaign.value(second.id));
        QCOMPARE(history.lastCreditOfCampaign.value(u"lumen-type"_s), 0);
    }

    void theHistoryOfAnotherDeviceDoesNotMatter()
    {
        const auto other = m_devices->add({}, m_time->now()).device;
        earn(m_device);

        QVERIFY(m_ledger->history(other.id).lastCreditOfCampaign.isEmpty());
    }

    void viewsAreListedWithTheirVerdict()
    {
        std::ignore = m_devices->link(m_device.activationCode, u"demo"_s, m_time->now());
        const auto& campaign = m_campaigns.all().front();
        earn(m_device);
        const auto early = startSession(campaign);
        std::ignore = m_ledger->complete(m_device.id, early.id, m_time->now());
        const auto open = startSession(campaign);
        QVERIFY(m_ledger->click(m_device.id, open.id) == campaign.id);

        const auto views = m_ledger->viewsOfViewer(u"demo"_s, m_time->now(), 10);

        QCOMPARE(views.size(), 3U);
        QVERIFY(views[0].state == View::State::watching);
        QVERIFY(views[0].clicked);
        QVERIFY(views[1].state == View::State::refused);
        QVERIFY(views[2].state == View::State::credited);
        QVERIFY(!views[2].clicked);
        QCOMPARE(views[2].advertiserName, campaign.advertiserName);
        QCOMPARE(views[2].requiredSeconds, 10);
        QCOMPARE(views[2].viewerEarn.microCents(), 2'100'000);
        QCOMPARE(m_ledger->viewsOfViewer(u"demo"_s, m_time->now(), 2).size(), 2U);
        QVERIFY(m_ledger->viewsOfViewer(u"other"_s, m_time->now(), 10).empty());
    }

    void aViewThatIsLongOverdueWasNotCompleted()
    {
        std::ignore = m_devices->link(m_device.activationCode, u"demo"_s, m_time->now());
        startSession(m_campaigns.all().front());

        m_clock.advance(10s + 60s - 1ms);
        QVERIFY(m_ledger->viewsOfViewer(u"demo"_s, m_time->now(), 1).front().state == View::State::watching);
        m_clock.advance(1ms);
        QVERIFY(m_ledger->viewsOfViewer(u"demo"_s, m_time->now(), 1).front().state == View::State::notCompleted);
    }

    void whatFailsIsUndoneAsAWhole()
    {
        QVERIFY(m_database->end());
        m_database->begin();
        std::ignore = m_devices->add({}, m_time->now());
        m_database->run(u"INSERT INTO credit (session) VALUES ('none')"_s);
        std::ignore = m_devices->add({}, m_time->now());
        QTest::ignoreMessage(QtWarningMsg, QRegularExpression(u"The database refused: "_s));
        QVERIFY(!m_database->end());

        m_database->begin();
        QCOMPARE(m_database->value(u"SELECT COUNT(*) FROM device"_s).toInt(), 1);
    }

private:
    Session startSession(const Campaign& campaign)
    {
        return m_ledger->start(m_device.id, {&campaign, &campaign.creatives.front(), {}}, true, m_time->now());
    }

    void earn(const Device& device)
    {
        const auto& campaign = m_campaigns.all().front();
        const auto session =
            m_ledger->start(device.id, {&campaign, &campaign.creatives.front(), {}}, true, m_time->now());
        m_clock.advance(10s);
        QVERIFY(m_ledger->complete(device.id, session.id, m_time->now())->completed);
    }

    const Campaigns m_campaigns = Campaigns::seeded();
    FakeClock m_clock;
    std::unique_ptr<Database> m_database;
    std::optional<Devices> m_devices;
    std::optional<Ledger> m_ledger;
    std::optional<ServiceTime> m_time;
    Device m_device;
};

QTEST_GUILESS_MAIN(LedgerTest)

#include "LedgerTest.moc"
