#include "platform/linux/KeyringSecretStore.h"
#include "support/FakeClock.h"
#include "support/FakeSecretService.h"
#include "support/Outcome.h"

#include <QTest>
#include <QTimer>

#include <memory>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto kService = u"orvella.device-token"_s;
const auto kAccount = u"default"_s;

using Reading = Outcome<std::optional<Secret>>;

} // namespace

/// The store and a keyring that is locked, silent, failing or gone.
class KeyringFaultsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        clock = std::make_unique<FakeClock>();
        service = std::make_unique<FakeSecretService>();
        store = std::make_unique<KeyringSecretStore>(*clock);
    }

    void cleanup()
    {
        store.reset();
        QCOMPARE(clock->sleepers(), 0U);
        service.reset();
    }

    void withoutAServiceThereIsNoItemAtOnce()
    {
        const auto reading = read();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
    }

    void theMainLoopGoesOnWhileAPromptIsUp()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        int ticks = 0;
        QTimer timer;
        connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });

        const auto reading = read();
        QTRY_COMPARE(service->prompts(), 1);
        timer.start(10ms);
        QTest::qWait(1000);

        QVERIFY2(ticks >= 80, QByteArray::number(ticks));
        QVERIFY(!reading.isThere());
    }

    void aPromptIsWaitedForWithoutALimit()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();

        const auto reading = read();
        QTRY_COMPARE(service->prompts(), 1);
        QTRY_COMPARE(clock->sleepers(), 0U);
        clock->advance(24h);
        QVERIFY(!reading.isThere());
        service->agree();

        QTRY_VERIFY(reading.isThere());
        QCOMPARE((*reading)->reveal(), "token-1");
    }

    void readsThatComeWhileAPromptIsUpShareIt()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();

        const auto first = read();
        QTRY_COMPARE(service->prompts(), 1);
        const auto second = read();
        const auto third = read();
        QTRY_COMPARE(service->calls(u"SearchItems"_s), 3);
        QTest::qWait(100);
        QCOMPARE(service->calls(u"Unlock"_s), 1);
        service->agree();

        QTRY_VERIFY(first.isThere() && second.isThere() && third.isThere());
        QVERIFY(*first && *second && *third);
        QCOMPARE(service->calls(u"Prompt"_s), 1);
    }

    void aRefusalCountsForAllWhoWait()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();

        const auto first = read();
        const auto second = read();
        QTRY_COMPARE(service->prompts(), 1);
        QTest::qWait(100);
        service->dismiss();

        QTRY_VERIFY(first.isThere() && second.isThere());
        QVERIFY(!*first && !*second);
        QCOMPARE(service->calls(u"Prompt"_s), 1);
    }

    void aStoppedReadLetsGoAtOnceAndTheOthersKeepThePrompt()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        std::stop_source stop;

        const auto first = read(stop.get_token());
        const auto second = read();
        QTRY_COMPARE(service->prompts(), 1);
        QTest::qWait(100);
        stop.request_stop();

        QVERIFY(first.isThere());
        QVERIFY(!*first);
        QVERIFY(!second.isThere());
        QCOMPARE(service->prompts(), 1);
        service->agree();
        QTRY_VERIFY(second.isThere());
        QVERIFY(*second);
    }

    void aPromptThatNobodyWaitsForAnyMoreIsNotWithdrawnAndStillCounts()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        std::stop_source stop;
        const auto first = read(stop.get_token());
        QTRY_COMPARE(service->prompts(), 1);
        stop.request_stop();

        const auto second = read();
        QTRY_COMPARE(service->calls(u"SearchItems"_s), 2);
        service->agree();

        QTRY_VERIFY(second.isThere());
        QVERIFY(*second);
        QCOMPARE(service->calls(u"Prompt"_s), 1);
        QCOMPARE(service->calls(u"Dismiss"_s), 0);
    }

    void afterARefusalNothingIsAskedUntilTheKeyringIsFoundOpen()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        const auto refused = read();
        QTRY_COMPARE(service->prompts(), 1);
        service->dismiss();
        QTRY_VERIFY(refused.isThere());

        const auto quiet = read();
        QTRY_VERIFY(quiet.isThere());
        QVERIFY(!*quiet);
        QCOMPARE(service->calls(u"Prompt"_s), 1);

        service->isLocked = false;
        const auto open = read();
        QTRY_VERIFY(open.isThere());
        QVERIFY(*open);

        service->isLocked = true;
        const auto asked = read();
        QTRY_COMPARE(service->prompts(), 1);
    }

    void aLockedCollectionThatHidesItsItemsIsUnlockedBeforeThereIsNoItem()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->hidesLockedItems = true;
        service->start();

        const auto reading = read();
        QTRY_COMPARE(service->prompts(), 1);
        service->agree();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
    }

    void aMissingCollectionIsMadeForTheFirstItem()
    {
        service->hasCollection = false;
        service->start();
        const auto reading = read();
        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
        QCOMPARE(service->calls(u"Prompt"_s), 0);

        const Outcome adding(store->add(kService, kAccount, Secret("token-1")));
        QTRY_COMPARE(service->prompts(), 1);
        service->agree();

        QTRY_VERIFY(adding.isThere());
        QCOMPARE(service->items.size(), 1U);
    }

    void anItemIsNotAddedWhereTheViewerWantsNoKeyring()
    {
        service->hasCollection = false;
        service->start();

        const Outcome adding(store->addItem(kService, kAccount, Secret("token-1")));
        QTRY_COMPARE(service->prompts(), 1);
        service->dismiss();

        QTRY_VERIFY(adding.isThere());
        QCOMPARE((*adding).trouble(), KeyringTrouble::refused);
        QVERIFY(service->items.empty());
    }

    void aSilentServiceIsAbsentAfterTenSeconds_data()
    {
        QTest::addColumn<QString>("method");
        for (const auto* const method : {"OpenSession", "SearchItems", "GetSecrets"})
            QTest::newRow(method) << QString::fromLatin1(method);
    }

    void aSilentServiceIsAbsentAfterTenSeconds()
    {
        QFETCH(const QString, method);
        service->put(kService, "token-1");
        service->fail(method, FakeSecretService::Fault::silence);
        service->start();

        const auto reading = read();
        QTRY_COMPARE(service->calls(method), 1);
        QTRY_COMPARE(clock->sleepers(), 1U);
        clock->advance(10s - 1ns);
        QVERIFY(!reading.isThere());
        clock->advance(1ns);

        QVERIFY(reading.isThere());
        QVERIFY(!*reading);
    }

    void aServiceThatWasSilentIsAskedAgainLater()
    {
        service->put(kService, "token-1");
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::silence);
        service->start();
        const auto silent = read();
        QTRY_COMPARE(service->calls(u"SearchItems"_s), 1);
        clock->advance(10s);
        QVERIFY(silent.isThere());

        service->recover();
        const auto reading = read();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
    }

    void aStopEndsACallThatIsNotAnswered()
    {
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::silence);
        service->start();
        std::stop_source stop;
        const auto reading = read(stop.get_token());
        QTRY_COMPARE(service->calls(u"SearchItems"_s), 1);

        stop.request_stop();

        QVERIFY(reading.isThere());
        QVERIFY(!*reading);
        QCOMPARE(clock->sleepers(), 0U);
    }

    void aReadThatIsStoppedBeforeItBeginsAsksNobody()
    {
        service->start();
        std::stop_source stop;
        stop.request_stop();

        const auto reading = read(stop.get_token());

        QVERIFY(reading.isThere());
        QVERIFY(!*reading);
        QTest::qWait(100);
        QCOMPARE(service->calls(u"OpenSession"_s), 0);
    }

    void aCallThatFailsIsTriedAgainAfterPauses_data()
    {
        QTest::addColumn<QString>("method");
        for (const auto* const method : {"OpenSession", "SearchItems", "GetSecrets"})
            QTest::newRow(method) << QString::fromLatin1(method);
    }

    void aCallThatFailsIsTriedAgainAfterPauses()
    {
        QFETCH(const QString, method);
        service->put(kService, "token-1");
        service->fail(method, FakeSecretService::Fault::error, 3);
        service->start();

        const auto reading = read();
        waitOut(1s);
        waitOut(2s);
        waitOut(4s);

        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
    }

    void aCallThatFailsEachTimeCountsAsNoItem()
    {
        service->put(kService, "token-1");
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::error);
        service->start();

        const auto reading = read();
        waitOut(1s);
        waitOut(2s);
        waitOut(4s);

        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
        QCOMPARE(service->calls(u"SearchItems"_s), 4);
    }

    void aServiceThatDiesInACallIsUsedAgainWhenItIsBack()
    {
        service->put(kService, "token-1");
        service->fail(u"GetSecrets"_s, FakeSecretService::Fault::death);
        service->start();

        const auto reading = read();
        QTRY_COMPARE(service->calls(u"GetSecrets"_s), 1);
        waitOut(1s);
        waitOut(2s);
        awaitPause(4s);
        service->recover();
        service->start();
        clock->advance(4s);

        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
    }

    void aServiceThatDiesUnderAPromptHasNotBeenRefused()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        const auto reading = read();
        QTRY_COMPARE(service->prompts(), 1);

        service->die();
        service->start();
        waitOut(1s);

        QTRY_COMPARE(service->prompts(), 1);
        service->agree();
        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
    }

    void aServiceThatDiedBetweenTwoCallsIsWaitedForAWhile()
    {
        service->put(kService, "token-1");
        service->start();
        const auto before = read();
        QTRY_VERIFY(before.isThere());
        QVERIFY(*before);

        service->die();
        const auto after = read();
        awaitPause(1s);
        service->start();
        clock->advance(1s);

        QTRY_VERIFY(after.isThere());
        QVERIFY(*after);
    }

    void aServiceThatStaysAwayIsWaitedForOnlyOnce()
    {
        service->put(kService, "token-1");
        service->start();
        const auto before = read();
        QTRY_VERIFY(before.isThere());
        service->die();
        const auto after = read();
        waitOut(1s);
        waitOut(2s);
        waitOut(4s);
        QTRY_VERIFY(after.isThere());
        QVERIFY(!*after);

        const auto later = read();

        QTRY_VERIFY(later.isThere());
        QVERIFY(!*later);
    }

    void aStopEndsThePauseBetweenTwoAttempts()
    {
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::error);
        service->start();
        std::stop_source stop;
        const auto reading = read(stop.get_token());
        QTRY_COMPARE(service->calls(u"SearchItems"_s), 1);
        QTRY_COMPARE(clock->sleepers(), 1U);

        stop.request_stop();

        QVERIFY(reading.isThere());
        QVERIFY(!*reading);
    }

    void aStoreThatGoesAwayEndsWhatWaits()
    {
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::silence);
        service->start();
        const auto reading = read();
        const Outcome removal(store->remove(kService, kAccount));
        QTRY_COMPARE(service->calls(u"SearchItems"_s), 2);

        store.reset();

        QVERIFY(reading.isThere());
        QVERIFY(removal.isThere());
    }

private:
    Reading read(std::stop_token stop = {}) { return Reading(store->read(kService, kAccount, stop)); }

    /// Waits until the store pauses between two attempts.
    void awaitPause(Clock::duration pause)
    {
        QVERIFY(QTest::qWaitFor([&] { return clock->nextPause() == pause; }));
    }

    void waitOut(Clock::duration pause)
    {
        awaitPause(pause);
        clock->advance(pause);
    }

    std::unique_ptr<FakeClock> clock;
    std::unique_ptr<FakeSecretService> service;
    std::unique_ptr<KeyringSecretStore> store;
};

QTEST_GUILESS_MAIN(KeyringFaultsTest)

#include "KeyringFaultsTest.moc"
