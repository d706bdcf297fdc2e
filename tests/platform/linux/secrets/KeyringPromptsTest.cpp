#include "support/KeyringFixture.h"

#include <QTimer>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Finding = SecretStore::Finding;
using Looking = Outcome<Finding>;

} // namespace

/// The store and a keyring that asks the viewer.
class KeyringPromptsTest final : public KeyringFixture {
    Q_OBJECT

private Q_SLOTS:
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

    void aLookTellsTheAnswersApartAndAsksTheViewerNothing_data()
    {
        QTest::addColumn<bool>("hasItem");
        QTest::addColumn<bool>("isLocked");
        QTest::addColumn<bool>("hidesLockedItems");
        QTest::addColumn<Finding>("finding");

        QTest::newRow("an item") << true << false << false << Finding::item;
        QTest::newRow("no item") << false << false << false << Finding::noItem;
        QTest::newRow("an item that is locked") << true << true << false << Finding::locked;
        QTest::newRow("a locked collection that hides it") << true << true << true << Finding::locked;
        QTest::newRow("a locked collection without it") << false << true << false << Finding::locked;
    }

    void aLookTellsTheAnswersApartAndAsksTheViewerNothing()
    {
        QFETCH(const bool, hasItem);
        QFETCH(const bool, isLocked);
        QFETCH(const bool, hidesLockedItems);
        QFETCH(const Finding, finding);
        if (hasItem)
            service->put(kService, "token-1");
        service->isLocked = isLocked;
        service->hidesLockedItems = hidesLockedItems;
        service->start();

        const auto look = Looking(store->look(kService, kAccount));

        QTRY_VERIFY(look.isThere());
        QCOMPARE(*look, finding);
        QCOMPARE(service->calls(u"Unlock"_s), 0);
        QCOMPARE(service->calls(u"Prompt"_s), 0);
    }

    void withoutAServiceALookFindsNoStore()
    {
        const auto look = Looking(store->look(kService, kAccount));

        QTRY_VERIFY(look.isThere());
        QCOMPARE(*look, Finding::absent);
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

    void aServiceThatDiesUnderAPromptHasNotBeenRefused()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        const auto reading = read();
        QTRY_COMPARE(service->prompts(), 1);

        service->die();
        service->start();
        QTRY_COMPARE(clock->nextPause(), 1s);
        clock->advance(1s);

        QTRY_COMPARE(service->prompts(), 1);
        service->agree();
        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
    }
};

QTEST_GUILESS_MAIN(KeyringPromptsTest)

#include "KeyringPromptsTest.moc"
