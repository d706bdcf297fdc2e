#include "platform/linux/secrets/SystemSecretsFixture.h"
#include "support/FakeSecretService.h"
#include "support/KeyringDaemon.h"

#include <QFileInfo>

#include <deque>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;
using namespace std::chrono_literals;

namespace {

void makeFile(const QString& path)
{
    if (QFile file(path); !file.open(QIODevice::WriteOnly))
        qFatal("The file cannot be made.");
}

} // namespace

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

    void anItemStaysInTheFileUntilTheKeyringIsMarked_data()
    {
        QTest::addColumn<bool>("isInKeyring");
        QTest::newRow("in both") << true;
        QTest::newRow("in the file alone") << false;
    }

    void anItemStaysInTheFileUntilTheKeyringIsMarked()
    {
        QFETCH(const bool, isInKeyring);
        // secrets.json takes it, but no file, as the mark is one, can have such a name.
        const QString service(255, u'a');
        wait(file->add(service, kAccount, Secret("token-1")));
        FakeSecretService keyring;
        if (isInKeyring)
            keyring.put(service, "token-1");
        keyring.start();

        std::deque<Outcome<std::optional<Secret>>> readings;
        for (int count = 0; count < 10; ++count)
            readings.emplace_back(store->read(service, kAccount, {}));

        for (const auto& reading : readings) {
            QVERIFY(isOver(reading));
            QVERIFY(*reading == Secret("token-1"));
        }
        QCOMPARE(read(*file, service), "token-1");
        QVERIFY(!keyring.items.empty());
    }

    void whatIsAddedWhileAReadWaitsStaysInTheFile()
    {
        wait(file->add(kService, kAccount, Secret("token-1")));
        makeFile(home->filePath(kService + u'-' + kAccount + u".in-keyring"_s));
        const Outcome reading(store->read(kService, kAccount, {}));
        QTRY_VERIFY(clock.nextPause());
        wait(store->add(kService, kAccount, Secret("token-2")));
        QCOMPARE(read(*file), "token-2");
        QVERIFY(!reading.isThere());

        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();

        QVERIFY(isOver(reading));
        QVERIFY(*reading == Secret("token-2"));
        QCOMPARE(read(*file), "token-2");
    }

    void theFileIsLeftAloneOnceItsItemIsKnownToLieInTheKeyringAlone()
    {
        const auto left = home->filePath(u"secrets.json.unfinished-a1B2c3"_s);
        FakeSecretService service;
        service.put(kService, "token-1");
        service.start();
        QCOMPARE(read(*store), "token-1");
        makeFile(left);

        QCOMPARE(read(*store), "token-1");
        QVERIFY(QFileInfo::exists(left));

        wait(store->remove(kService, kAccount));
        QVERIFY(!QFileInfo::exists(left));
        makeFile(left);
        QVERIFY(!read(*store));
        QVERIFY(!QFileInfo::exists(left));
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
