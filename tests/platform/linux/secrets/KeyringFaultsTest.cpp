#include "support/KeyringFixture.h"

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

/// The store and a keyring that is silent, failing or gone.
class KeyringFaultsTest final : public KeyringFixture {
    Q_OBJECT

private Q_SLOTS:
    void withoutAServiceThereIsNoItemAtOnce()
    {
        const auto reading = read();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
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

    void aCallThatWasGivenUpIsOverForGood()
    {
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::silence);
        service->start();
        const Outcome removal(store->removeItem(kService, kAccount));
        QTRY_COMPARE(service->calls(u"SearchItems"_s), 1);
        clock->advance(10s);
        QVERIFY(removal.isThere());

        store.reset();
        service->recover();
        QTest::qWait(100);

        QCOMPARE((*removal).trouble(), KeyringTrouble::absent);
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
};

QTEST_GUILESS_MAIN(KeyringFaultsTest)

#include "KeyringFaultsTest.moc"
