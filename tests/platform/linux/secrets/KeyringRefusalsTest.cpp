#include "support/KeyringFixture.h"

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

using Finding = SecretStore::Finding;
using Looking = Outcome<Finding>;

} // namespace

/// The store and a keyring that the viewer does not unlock.
class KeyringRefusalsTest final : public KeyringFixture {
    Q_OBJECT

private Q_SLOTS:
    void aRefusalCountsForAllWhoWait()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();

        const auto first = read();
        const auto second = read();
        QTRY_COMPARE(service->prompts(), 1);
        QTest::qWait(100);
        dismiss();

        QTRY_VERIFY(first.isThere() && second.isThere());
        QVERIFY(!*first && !*second);
        QCOMPARE(service->calls(u"Prompt"_s), 1);
    }

    void afterARefusalNothingIsAskedUntilTheKeyringIsFoundOpen()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        const auto refused = read();
        QTRY_COMPARE(service->prompts(), 1);
        dismiss();
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

    void afterARefusalALookSaysSoUntilTheKeyringIsFoundOpen()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        const auto refused = read();
        QTRY_COMPARE(service->prompts(), 1);
        dismiss();
        QTRY_VERIFY(refused.isThere());

        const auto closed = Looking(store->look(kService, kAccount));
        QTRY_VERIFY(closed.isThere());
        QCOMPARE(*closed, Finding::refused);

        service->isLocked = false;
        const auto open = Looking(store->look(kService, kAccount));
        QTRY_VERIFY(open.isThere());
        QCOMPARE(*open, Finding::item);
    }

    void anItemIsNotAddedWhereTheViewerWantsNoKeyring()
    {
        service->hasCollection = false;
        service->start();

        const Outcome adding(store->addItem(kService, kAccount, Secret("token-1")));
        QTRY_COMPARE(service->prompts(), 1);
        dismiss();

        QTRY_VERIFY(adding.isThere());
        QCOMPARE((*adding).trouble(), KeyringTrouble::refused);
        QVERIFY(service->items.empty());
        const auto reading = read();
        QTRY_VERIFY(reading.isThere());
        const Outcome again(store->addItem(kService, kAccount, Secret("token-1")));
        QTRY_VERIFY(again.isThere());
        QCOMPARE(service->calls(u"Prompt"_s), 1);
    }

    void aDismissalThatIsFasterThanAViewerIsNoRefusal()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        const Outcome reading(store->readItem(kService, kAccount, {}));
        for (const auto pause : {1s, 2s, 4s}) {
            dismiss(1s - 1ns);
            QTRY_COMPARE(clock->nextPause(), pause);
            clock->advance(pause);
        }

        dismiss(1s - 1ns);

        QTRY_VERIFY(reading.isThere());
        QCOMPARE((*reading).trouble(), KeyringTrouble::absent);
        const auto again = read();
        QTRY_COMPARE(service->prompts(), 1);
        service->agree();
        QTRY_VERIFY(again.isThere());
        QVERIFY(*again);
    }

    void aDismissalAfterASecondIsARefusal()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        const Outcome reading(store->readItem(kService, kAccount, {}));

        dismiss(1s);

        QTRY_VERIFY(reading.isThere());
        QCOMPARE((*reading).trouble(), KeyringTrouble::refused);
    }

    void aPromptThatNobodySawIsShownAgain()
    {
        service->put(kService, "token-1");
        service->isLocked = true;
        service->start();
        const auto reading = read();
        dismiss(0s);
        QTRY_COMPARE(clock->nextPause(), 1s);
        clock->advance(1s);

        QTRY_COMPARE(service->prompts(), 1);
        service->agree();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
    }

private:
    /// Dismisses the prompt as a viewer does who has read it, or as soon as it says.
    void dismiss(Clock::duration after = 1s)
    {
        QTRY_COMPARE(service->prompts(), 1);
        clock->advance(after);
        service->dismiss();
    }
};

QTEST_GUILESS_MAIN(KeyringRefusalsTest)

#include "KeyringRefusalsTest.moc"
