#include "platform/linux/SystemSecretStore.h"
#include "support/FakeClock.h"
#include "support/FakeSecretService.h"
#include "support/KeyringDaemon.h"
#include "support/Outcome.h"

#include <QFileInfo>
#include <QTemporaryDir>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

const auto kService = u"orvella.device-token"_s;
const auto kAccount = u"default"_s;

} // namespace

/// Keyring or file, and the way from the one to the other.
class SystemSecretStoreTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        home = std::make_unique<QTemporaryDir>();
        QVERIFY(home->isValid());
        file = std::make_unique<FileSecretStore>(home->path());
        store = std::make_unique<SystemSecretStore>(clock, home->path());
    }

    void cleanup()
    {
        store.reset();
        file.reset();
        home.reset();
    }

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

    void wait(QCoro::Task<> task)
    {
        const Outcome outcome(std::move(task));
        QVERIFY(isOver(outcome));
    }

    std::optional<QByteArray> read(SecretStore& secrets)
    {
        const Outcome outcome(secrets.read(kService, kAccount, {}));
        if (!isOver(outcome))
            qFatal("The store does not answer.");
        return *outcome ? std::optional((*outcome)->reveal()) : std::nullopt;
    }

    /// Skips the pauses between two attempts, but no limit of a call.
    template <class T> bool isOver(const Outcome<T>& outcome)
    {
        return QTest::qWaitFor(
            [&] {
                if (const auto pause = clock.nextPause(); pause && *pause < KeyringSecretStore::kAnswerLimit)
                    clock.advance(*pause);
                return outcome.isThere();
            },
            20000);
    }

    FakeClock clock;
    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<FileSecretStore> file;
    std::unique_ptr<SystemSecretStore> store;
};

QTEST_GUILESS_MAIN(SystemSecretStoreTest)

#include "SystemSecretStoreTest.moc"
