#include "platform/linux/SystemSecretsFixture.h"
#include "support/FakeSecretService.h"
#include "support/KeyringDaemon.h"

#include <QFileInfo>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

/// Keyring or file, and the way from the one to the other.
class SystemSecretStoreTest final : public QObject, private SystemSecretsFixture {
    Q_OBJECT

private Q_SLOTS:
    void init() { start(); }

    void cleanup() { finish(); }

    void withoutAKeyringTheFileServes()
    {
        wait(store->add(kService, kAccount, Secret("token-1")));
        QCOMPARE(read(*store), "token-1");
        QCOMPARE(read(*file), "token-1");

        wait(store->remove(kService, kAccount));
        QVERIFY(!read(*store));
        QVERIFY(!read(*file));
    }

    void withAKeyringTheFileIsNotTouched()
    {
        KeyringDaemon daemon;
        QVERIFY(daemon.start());

        wait(store->add(kService, kAccount, Secret("token-1")));

        QCOMPARE(read(*store), "token-1");
        QVERIFY(!QFileInfo::exists(home->filePath(u"secrets.json"_s)));
        QCOMPARE(KeyringDaemon::secretTool({u"lookup"_s, u"service"_s, kService, u"account"_s, kAccount}), "token-1");
    }

    void anItemOfTheFileMovesIntoTheKeyringThatAppears()
    {
        wait(store->add(kService, kAccount, Secret("token-1")));
        KeyringDaemon daemon;
        QVERIFY(daemon.start());

        QCOMPARE(read(*store), "token-1");

        QCOMPARE(KeyringDaemon::secretTool({u"lookup"_s, u"service"_s, kService, u"account"_s, kAccount}), "token-1");
        QVERIFY(!read(*file));
        QCOMPARE(read(*store), "token-1");
    }

    void anItemStaysInTheFileUntilTheKeyringHoldsIt_data()
    {
        QTest::addColumn<QString>("method");
        QTest::newRow("the item is not taken") << u"CreateItem"_s;
        QTest::newRow("the item cannot be read back") << u"GetSecrets"_s;
    }

    void anItemStaysInTheFileUntilTheKeyringHoldsIt()
    {
        QFETCH(const QString, method);
        wait(store->add(kService, kAccount, Secret("token-1")));
        FakeSecretService service;
        service.fail(method, FakeSecretService::Fault::error);
        service.start();

        QCOMPARE(read(*store), "token-1");
        QCOMPARE(read(*file), "token-1");

        service.recover();
        QCOMPARE(read(*store), "token-1");
        QVERIFY(!read(*file));
        QCOMPARE(service.items.size(), 1U);
    }

    void aMoveThatWasCutShortIsFinished()
    {
        wait(file->add(kService, kAccount, Secret("token-1")));
        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();

        QCOMPARE(read(*store), "token-1");

        QVERIFY(!read(*file));
        QCOMPARE(service.items.size(), 1U);
    }

    void anItemOfTheKeyringIsNotOverwrittenByOneOfTheFile()
    {
        wait(file->add(kService, kAccount, Secret("token-2")));
        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();

        QCOMPARE(read(*store), "token-1");
        QCOMPARE(read(*file), "token-2");
    }

    void anItemOfTheFileIsReadWhenTheViewerDoesNotUnlock()
    {
        wait(file->add(kService, kAccount, Secret("token-1")));
        FakeSecretService service;
        service.isLocked = true;
        service.start();

        const Outcome reading(store->read(kService, kAccount, {}));
        QTRY_COMPARE(service.prompts(), 1);
        clock.advance(1s);
        service.dismiss();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
        QCOMPARE(read(*file), "token-1");
    }

    void whatTheViewerRefusesIsNotWrittenToTheFile()
    {
        FakeSecretService service;
        service.isLocked = true;
        service.start();

        const Outcome adding(store->add(kService, kAccount, Secret("token-1")));
        QTRY_COMPARE(service.prompts(), 1);
        clock.advance(1s);
        service.dismiss();

        QTRY_VERIFY(adding.isThere());
        QVERIFY(!read(*file));
    }

    void removingRemovesFromBoth()
    {
        wait(file->add(kService, kAccount, Secret("token-2")));
        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();

        wait(store->remove(kService, kAccount));

        QVERIFY(service.items.empty());
        QVERIFY(!read(*file));
    }

    void aStoppedReadHasNoItem()
    {
        FakeSecretService service;
        service.fail(u"SearchItems"_s, FakeSecretService::Fault::silence);
        service.start();
        std::stop_source stop;
        const Outcome reading(store->read(kService, kAccount, stop.get_token()));
        QTRY_COMPARE(service.calls(u"SearchItems"_s), 1);

        stop.request_stop();

        QVERIFY(reading.isThere());
        QVERIFY(!*reading);
    }

    void aStoreThatGoesAwayEndsWhatWaits()
    {
        FakeSecretService service;
        service.fail(u"SearchItems"_s, FakeSecretService::Fault::silence);
        service.start();
        const Outcome first(store->read(kService, kAccount, {}));
        QTRY_COMPARE(service.calls(u"SearchItems"_s), 1);
        const Outcome second(store->read(kService, kAccount, {}));
        const Outcome adding(store->add(kService, kAccount, Secret("token-1")));

        store.reset();

        QTRY_VERIFY(first.isThere() && second.isThere() && adding.isThere());
        QVERIFY(!*first && !*second);
        QVERIFY(!read(*file));
    }
};

QTEST_GUILESS_MAIN(SystemSecretStoreTest)

#include "SystemSecretStoreTest.moc"
