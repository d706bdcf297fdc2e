#include "platform/linux/secrets/SystemSecretStore.h"
#include "support/FakeClock.h"
#include "support/FakeSecretService.h"
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

using Reading = Outcome<std::optional<Secret>>;

} // namespace

/// What makes the store wait for a keyring, and for how many runs.
class KeyringMarkTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init()
    {
        home = std::make_unique<QTemporaryDir>();
        clock = std::make_unique<FakeClock>();
        service = std::make_unique<FakeSecretService>();
        startRun();
    }

    void cleanup()
    {
        store.reset();
        QCOMPARE(clock->sleepers(), 0U);
        service.reset();
    }

    void aFreshViewerWithoutAKeyringDoesNotWait()
    {
        const auto reading = read();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
        QVERIFY(QDir(home->path()).isEmpty());
    }

    void theMarkIsAnEmptyFileOfItsOwner()
    {
        service->start();

        add("token-1");

        const QFileInfo mark(home->filePath(u"orvella.device-token-default.in-keyring"_s));
        QVERIFY(mark.exists());
        QCOMPARE(mark.size(), 0);
        QCOMPARE(mark.permissions() & (QFile::ReadGroup | QFile::ReadOther), QFile::Permissions());
    }

    void aNameThatIsNoFileNameStaysInTheFolder()
    {
        KeyringMark mark(home->path());
        const Outcome setting(mark.set(u"a/../b"_s, kAccount));
        QTRY_VERIFY(setting.isThere());

        const Outcome looking(mark.isSet(u"a/../b"_s, kAccount));

        QTRY_VERIFY(looking.isThere());
        QVERIFY(*looking);
        QCOMPARE(QDir(home->path()).entryList(QDir::Files), QStringList {u"a%2F..%2Fb-default.in-keyring"_s});
    }

    void anItemThatWasWrittenToTheKeyringIsWaitedFor()
    {
        service->start();
        add("token-1");
        service->die();
        startRun();

        const auto reading = read();

        QVERIFY(waits());
        service->start();
        QTRY_VERIFY(reading.isThere());
        QCOMPARE((*reading)->reveal(), "token-1");
    }

    void anItemThatWasReadFromTheKeyringIsWaitedFor()
    {
        readOnceFromTheKeyring();

        const auto reading = read();

        QVERIFY(waits());
        service->start();
        QTRY_VERIFY(reading.isThere());
        QCOMPARE((*reading)->reveal(), "token-1");
    }

    void anItemThatMovedIntoTheKeyringIsWaitedFor()
    {
        add("token-1");
        service->start();
        const auto moved = read();
        QTRY_VERIFY(moved.isThere());
        QCOMPARE(service->items.size(), 1U);
        service->die();
        startRun();

        const auto reading = read();

        QVERIFY(waits());
    }

    void anotherItemIsNotWaitedFor()
    {
        readOnceFromTheKeyring();

        const Reading reading(store->read(u"quillon.device-token"_s, kAccount, {}));

        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
    }

    void anItemOfTheFileServesWhenTheKeyringDoesNotComeAndIsThenNotWaitedFor()
    {
        readOnceFromTheKeyring();
        const auto reading = read();
        QVERIFY(waits());
        clock->advance(AwaitedKeyring::kLimit);
        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
        add("token-2");
        startRun();

        const auto later = read();

        QTRY_VERIFY(later.isThere());
        QCOMPARE((*later)->reveal(), "token-2");
    }

    void anItemOfTheFileWaitsForTheKeyringThatHasAnother()
    {
        add("token-2");
        startRun();
        readOnceFromTheKeyring();

        const auto reading = read();
        QVERIFY(waits());
        clock->advance(AwaitedKeyring::kLimit);

        QTRY_VERIFY(reading.isThere());
        QCOMPARE((*reading)->reveal(), "token-2");
        startRun();
        const auto later = read();
        QTRY_VERIFY(later.isThere());
        QCOMPARE((*later)->reveal(), "token-2");
    }

    void anItemOfThisRunIsNotWaitedFor()
    {
        service->put(kService, "token-1");
        service->start();
        const auto before = read();
        QTRY_VERIFY(before.isThere());
        service->die();

        const auto after = read();
        for (const auto pause : {1s, 2s, 4s}) {
            QTRY_COMPARE(clock->nextPause(), pause);
            clock->advance(pause);
        }

        QTRY_VERIFY(after.isThere());
        QCOMPARE((*after)->reveal(), "token-1");
    }

    void anItemOfThisRunServesWhileTheKeyringHasNoCollection()
    {
        service->put(kService, "token-1");
        service->start();
        const auto before = read();
        QTRY_VERIFY(before.isThere());
        service->items.clear();
        service->hasCollection = false;

        const auto after = read();

        QTRY_VERIFY(after.isThere());
        QVERIFY(*after);
        QCOMPARE((*after)->reveal(), "token-1");
        QCOMPARE(service->calls(u"CreateCollection"_s), 0);
    }

    void anItemThatWasRemovedIsNotWaitedFor()
    {
        readOnceFromTheKeyring();
        service->start();
        const Outcome removing(store->remove(kService, kAccount));
        QTRY_VERIFY(removing.isThere());
        service->die();
        startRun();

        const auto reading = read();

        QTRY_VERIFY(reading.isThere());
        QVERIFY(!*reading);
    }

    void anItemThatCouldNotBeRemovedIsWaitedFor_data()
    {
        QTest::addColumn<bool>("isThere");
        QTest::newRow("no service") << false;
        QTest::newRow("no collection") << true;
    }

    void anItemThatCouldNotBeRemovedIsWaitedFor()
    {
        QFETCH(const bool, isThere);
        readOnceFromTheKeyring();
        service->items.clear();
        service->hasCollection = false;
        if (isThere)
            service->start();
        const Outcome removing(store->remove(kService, kAccount));
        QTRY_VERIFY(removing.isThere());
        service->die();
        startRun();

        const auto reading = read();

        QVERIFY(waits());
    }

    void anItemThatTheViewerKeepsBackIsWaitedFor()
    {
        readOnceFromTheKeyring();
        service->isLocked = true;
        service->start();
        const auto refused = read();
        QTRY_COMPARE(service->prompts(), 1);
        clock->advance(1s);
        service->dismiss();
        QTRY_VERIFY(refused.isThere());
        const Outcome removing(store->remove(kService, kAccount));
        QTRY_VERIFY(removing.isThere());
        add("token-2");
        service->die();
        startRun();

        const auto reading = read();

        QVERIFY(waits());
    }

    void aStoreThatGoesAwayEndsTheWait()
    {
        readOnceFromTheKeyring();
        const auto reading = read();
        QVERIFY(waits());

        store.reset();

        QVERIFY(reading.isThere());
        QVERIFY(!*reading);
    }

private:
    void startRun() { store = std::make_unique<SystemSecretStore>(*clock, home->path()); }

    /// A run that found the token in the keyring, and the next one without.
    void readOnceFromTheKeyring()
    {
        service->put(kService, "token-1");
        service->start();
        const auto reading = read();
        QTRY_VERIFY(reading.isThere());
        QVERIFY(*reading);
        service->die();
        startRun();
    }

    Reading read() { return Reading(store->read(kService, kAccount, {})); }

    void add(const QByteArray& value)
    {
        const Outcome adding(store->add(kService, kAccount, Secret(value)));
        QTRY_VERIFY(adding.isThere());
    }

    /// The limit of the wait, and the flow that waits.
    bool waits()
    {
        return QTest::qWaitFor(
            [this] { return clock->nextPause() == AwaitedKeyring::kLimit && clock->sleepers() == 2; });
    }

    std::unique_ptr<QTemporaryDir> home;
    std::unique_ptr<FakeClock> clock;
    std::unique_ptr<FakeSecretService> service;
    std::unique_ptr<SystemSecretStore> store;
};

QTEST_GUILESS_MAIN(KeyringMarkTest)

#include "KeyringMarkTest.moc"
