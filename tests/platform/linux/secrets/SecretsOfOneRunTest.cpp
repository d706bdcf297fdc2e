#include "platform/linux/secrets/SystemSecretsFixture.h"
#include "support/FakeSecretService.h"

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

/// What one run of the program keeps to, whatever becomes of keyring and file meanwhile.
class SecretsOfOneRunTest final : public QObject, private SystemSecretsFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

    void whatTheViewerRefusesServesUntilTheProgramEnds()
    {
        FakeSecretService service;
        service.isLocked = true;
        service.start();
        refuse(service);

        QCOMPARE(read(*store), "token-2");
        service.die();
        QCOMPARE(read(*store), "token-2");

        store = std::make_unique<SystemSecretStore>(clock, home->path());
        QVERIFY(!read(*store));
    }

    void afterARefusalTheItemOfAKeyringThatIsFoundOpenCounts()
    {
        FakeSecretService service;
        service.put(kService, "token-1");
        service.isLocked = true;
        service.start();
        refuse(service);

        service.isLocked = false;

        QCOMPARE(read(*store), "token-1");
    }

    void afterARefusalTheItemMovesIntoAKeyringThatIsFoundOpenAndHasNone()
    {
        FakeSecretService service;
        service.isLocked = true;
        service.start();
        refuse(service);

        service.isLocked = false;

        QCOMPARE(read(*store), "token-2");
        QCOMPARE(service.items.size(), 1U);
        QCOMPARE(service.items.begin()->second.secret, "token-2");
    }

    void inOneRunTheItemOfTheFileStays()
    {
        wait(file->add(kService, kAccount, Secret("token-2")));
        QCOMPARE(read(*store), "token-2");
        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();

        QCOMPARE(read(*store), "token-2");
        QCOMPARE(service.calls(u"CreateItem"_s), 0);

        store = std::make_unique<SystemSecretStore>(clock, home->path());
        QCOMPARE(read(*store), "token-1");
    }

    void inOneRunAnItemThatWasAddedToTheFileStays()
    {
        wait(store->add(kService, kAccount, Secret("token-2")));
        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();

        QCOMPARE(read(*store), "token-2");
    }

    void inOneRunTheItemOfTheKeyringStays()
    {
        wait(file->add(kService, kAccount, Secret("token-2")));
        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();
        QCOMPARE(read(*store), "token-1");

        service.die();

        QCOMPARE(read(*store), "token-1");
    }

    void anItemThatSomebodyRemovedFromTheKeyringIsGone()
    {
        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();
        QCOMPARE(read(*store), "token-1");

        service.items.clear();

        QVERIFY(!read(*store));
    }

    void anItemThatOnceCouldNotBeReadStaysUntilAnotherHasBeenAdded()
    {
        FakeSecretService service;
        service.put(kService, "token-0");
        service.fail(u"SearchItems"_s, FakeSecretService::Fault::error);
        service.start();
        QVERIFY(!read(*store));
        service.recover();
        QCOMPARE(read(*store), "token-0");
        service.fail(u"CreateItem"_s, FakeSecretService::Fault::error);

        wait(store->remove(kService, kAccount));
        wait(store->add(kService, kAccount, Secret("token-1")));

        QCOMPARE(service.items.size(), 1U);
        QCOMPARE(service.items.begin()->second.secret, "token-0");
        service.recover();
        wait(store->remove(kService, kAccount));
        wait(store->add(kService, kAccount, Secret("token-2")));
        QCOMPARE(service.items.size(), 1U);
        QCOMPARE(service.items.begin()->second.secret, "token-2");
    }

    void whatIsRemovedIsNotRemembered()
    {
        wait(store->add(kService, kAccount, Secret("token-1")));
        wait(store->remove(kService, kAccount));

        QVERIFY(!read(*store));
    }

private:
    /// Adds an item for which the viewer does not unlock the keyring.
    void refuse(FakeSecretService& service)
    {
        const Outcome adding(store->add(kService, kAccount, Secret("token-2")));
        QTRY_COMPARE(service.prompts(), 1);
        clock.advance(1s);
        service.dismiss();
        QTRY_VERIFY(adding.isThere());
    }
};

QTEST_GUILESS_MAIN(SecretsOfOneRunTest)

#include "SecretsOfOneRunTest.moc"
