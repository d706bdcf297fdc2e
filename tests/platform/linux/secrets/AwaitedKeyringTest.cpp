#include "platform/linux/secrets/AwaitedKeyring.h"
#include "support/FakeClock.h"
#include "support/FakeSecretService.h"
#include "support/Outcome.h"

#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto kService = u"orvella.device-token"_s;
const auto kAccount = u"default"_s;
constexpr auto kLimit = AwaitedKeyring::kLimit;

using Reading = Outcome<FromKeyring<std::optional<Secret>>>;

} // namespace

/// A keyring that is known to have the item, and is not there, or not whole, yet.
class AwaitedKeyringTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        clock = std::make_unique<FakeClock>();
        service = std::make_unique<FakeSecretService>();
        service->put(kService, "token-1");
        store = std::make_unique<KeyringSecretStore>(*clock);
        keyring = std::make_unique<AwaitedKeyring>(*clock, *store);
    }

    void cleanup()
    {
        keyring.reset();
        store.reset();
        QCOMPARE(clock->sleepers(), 0U);
        service.reset();
    }

    void aKeyringThatIsThereIsNotWaitedFor()
    {
        service->start();

        const auto reading = read();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(hasItem(reading));
    }

    void anOpenKeyringWithoutTheItemIsNotWaitedFor()
    {
        service->items.clear();
        service->start();

        const auto reading = read();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading && !**reading);
    }

    void aServiceThatComesLateIsUsedAsSoonAsItIsThere()
    {
        const auto reading = read();
        awaitPause(kLimit);
        clock->advance(kLimit - 1ns);
        QVERIFY(!reading.isThere());

        service->start();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(hasItem(reading));
    }

    void whileThereIsNoServiceNothingIsDone()
    {
        const auto reading = read();
        awaitPause(kLimit);

        clock->advance(3min);

        QCOMPARE(clock->nextPause(), kLimit - 3min);
        QCOMPARE(clock->sleepers(), 2U);
    }

    void aServiceThatDoesNotComeInTenMinutesIsAbsent()
    {
        const auto reading = read();
        awaitPause(kLimit);

        clock->advance(kLimit);

        QVERIFY(reading.isThere());
        QCOMPARE((*reading).trouble(), KeyringTrouble::absent);
    }

    void aServiceThatWasGivenUpIsWaitedForAgainOnceItHasAnswered()
    {
        const auto first = read();
        awaitPause(kLimit);
        clock->advance(kLimit);
        QVERIFY(first.isThere());
        const auto second = read();
        QTRY_VERIFY(second.isThere());
        QCOMPARE((*second).trouble(), KeyringTrouble::absent);

        service->start();
        const auto third = read();
        QTRY_VERIFY(third.isThere());
        QVERIFY(hasItem(third));
        service->die();
        const auto fourth = read();

        QTRY_COMPARE(clock->nextPause(), 1s);
        for (const auto pause : {1s, 2s, 4s})
            waitOut(pause);
        awaitPause(kLimit);
        QVERIFY(!fourth.isThere());
    }

    void readsThatWaitShareTheLimit()
    {
        const auto first = read();
        awaitPause(kLimit);
        clock->advance(9min);
        const auto second = read();
        QTRY_COMPARE(clock->sleepers(), 3U);

        clock->advance(1min);

        QVERIFY(first.isThere());
        QVERIFY(second.isThere());
    }

    void aSilentServiceIsAskedAgain()
    {
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::silence);
        service->start();
        const auto reading = read();
        int calls = 0;
        for (const auto pause : {2s, 4s, 8s, 16s, 32s, 32s}) {
            ++calls;
            QTRY_COMPARE(service->calls(u"SearchItems"_s), calls);
            waitOut(KeyringSecretStore::kAnswerLimit);
            waitOut(pause);
        }
        QTRY_COMPARE(service->calls(u"SearchItems"_s), calls + 1);
        QVERIFY(!reading.isThere());

        service->recover();
        waitOut(KeyringSecretStore::kAnswerLimit);
        waitOut(32s);

        QTRY_VERIFY(reading.isThere());
        QVERIFY(hasItem(reading));
    }

    void aFailingServiceIsAskedAgain()
    {
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::error);
        service->start();
        const auto reading = read();
        for (const auto pause : {1s, 2s, 4s})
            waitOut(pause);

        awaitPause(2s);
        service->recover();
        clock->advance(2s);

        QTRY_VERIFY(reading.isThere());
        QVERIFY(hasItem(reading));
    }

    void aServiceThatIsReplacedIsAskedAtOnce()
    {
        service->fail(u"SearchItems"_s, FakeSecretService::Fault::silence);
        service->start();
        const auto reading = read();
        QTRY_COMPARE(service->calls(u"SearchItems"_s), 1);
        waitOut(KeyringSecretStore::kAnswerLimit);
        awaitPause(2s);

        service->die();
        service->recover();
        service->start();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(hasItem(reading));
    }

    void aServiceWithoutACollectionIsAskedAgain()
    {
        service->items.clear();
        service->hasCollection = false;
        service->start();
        const auto reading = read();
        awaitPause(2s);

        service->hasCollection = true;
        service->put(kService, "token-1");
        clock->advance(2s);

        QTRY_VERIFY(reading.isThere());
        QVERIFY(hasItem(reading));
        QCOMPARE(service->calls(u"Prompt"_s), 0);
    }

    void aPromptThatNobodySawIsShownAgain()
    {
        service->isLocked = true;
        service->start();
        const auto reading = read();
        for (const auto pause : {1s, 2s, 4s, 2s}) {
            QTRY_COMPARE(service->prompts(), 1);
            service->dismiss();
            waitOut(pause);
        }

        QTRY_COMPARE(service->prompts(), 1);
        service->agree();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(hasItem(reading));
    }

    void aPromptIsWaitedForBeyondTheLimit()
    {
        const auto reading = read();
        awaitPause(kLimit);
        service->isLocked = true;
        service->start();
        QTRY_COMPARE(service->prompts(), 1);
        QTRY_COMPARE(clock->nextPause(), kLimit);

        clock->advance(2 * kLimit);
        QVERIFY(!reading.isThere());
        service->agree();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(hasItem(reading));
    }

    void aRefusalIsNotWaitedOut()
    {
        service->isLocked = true;
        service->start();
        const auto reading = read();
        QTRY_COMPARE(service->prompts(), 1);

        clock->advance(1s);
        service->dismiss();

        QTRY_VERIFY(reading.isThere());
        QCOMPARE((*reading).trouble(), KeyringTrouble::refused);
    }

    void aStopEndsTheWait()
    {
        std::stop_source stop;
        const auto reading = read(stop.get_token());
        awaitPause(kLimit);

        stop.request_stop();

        QVERIFY(reading.isThere());
        QCOMPARE((*reading).trouble(), KeyringTrouble::stopped);
        QCOMPARE(clock->sleepers(), 0U);
    }

    void aKeyringThatGoesAwayEndsTheWait()
    {
        const auto reading = read();
        awaitPause(kLimit);

        keyring.reset();

        QVERIFY(reading.isThere());
        QCOMPARE((*reading).trouble(), KeyringTrouble::stopped);
    }

private:
    Reading read(std::stop_token stop = {}) { return Reading(keyring->readItem(kService, kAccount, stop)); }

    [[nodiscard]] static bool hasItem(const Reading& reading)
    {
        return *reading && **reading == std::optional(Secret("token-1"));
    }

    /// Waits until the next that ends is such a pause. The limit of the wait is no pause of its own.
    void awaitPause(Clock::duration pause)
    {
        const auto sleepers = pause == kLimit ? 2U : 1U;
        const auto isPausing = [&] { return clock->nextPause() == pause && clock->sleepers() >= sleepers; };
        QVERIFY2(QTest::qWaitFor(isPausing), QByteArray::number(clock->nextPause().value_or(0ns).count()));
    }

    void waitOut(Clock::duration pause)
    {
        awaitPause(pause);
        clock->advance(pause);
    }

    std::unique_ptr<FakeClock> clock;
    std::unique_ptr<FakeSecretService> service;
    std::unique_ptr<KeyringSecretStore> store;
    std::unique_ptr<AwaitedKeyring> keyring;
};

QTEST_GUILESS_MAIN(AwaitedKeyringTest)

#include "AwaitedKeyringTest.moc"
