#include "platform/macos/MacSecretStore.h"

#include "core/Keychain.h"
#include "platform/macos/Literals.h"
#include "support/FakeCocoa.h"
#include "support/Outcome.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const QString kService = Keychain::kService;
const QString kOlderService = Keychain::kLegacyService;
const auto kAccount = u"default"_s;

FakeCocoaSecrets::Item item(const QString& service, const std::string& bytes)
{
    return {service.toStdString(), literals::kTokenAccount, bytes};
}

} // namespace

class MacSecretStoreTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void whatWasAddedIsRead()
    {
        FakeCocoaSecrets keychain;
        MacSecretStore store(keychain);

        const Outcome added(store.add(kService, kAccount, Secret("token")));
        QTRY_VERIFY(added.isThere());
        const Outcome read(store.read(kService, kAccount, {}));
        QTRY_VERIFY(read.isThere());

        QCOMPARE(*read, Secret("token"));
        QCOMPARE(keychain.items(), (std::vector {item(kService, "token")}));
    }

    void anEmptyItemIsAToken()
    {
        FakeCocoaSecrets keychain;
        keychain.put(item(kService, ""));
        MacSecretStore store(keychain);

        const Outcome read(store.read(kService, kAccount, {}));
        QTRY_VERIFY(read.isThere());

        QCOMPARE(*read, Secret(""));
    }

    void theKeychainIsNeverAskedOnTheMainThread()
    {
        FakeCocoaSecrets keychain;
        MacSecretStore store(keychain);

        const Outcome added(store.add(kService, kAccount, Secret("token")));
        const Outcome read(store.read(kService, kAccount, {}));
        const Outcome found(store.look(kService, kAccount));
        const Outcome removed(store.remove(kService, kAccount));
        QTRY_VERIFY(added.isThere() && read.isThere() && found.isThere() && removed.isThere());

        QVERIFY(!keychain.wasAskedOnMainThread);
    }

    void aKeychainThatRefusesReadsAsEmptyAndKeepsWhatItHas()
    {
        FakeCocoaSecrets keychain;
        keychain.put(item(kService, "token"));
        keychain.refusal = -25293;
        MacSecretStore store(keychain);

        const Outcome read(store.read(kService, kAccount, {}));
        const Outcome removed(store.remove(kService, kAccount));
        QTRY_VERIFY(read.isThere() && removed.isThere());

        QCOMPARE(*read, std::nullopt);
        QCOMPARE(keychain.items(), (std::vector {item(kService, "token")}));
    }

    void aReadThatWasStoppedHasNothing()
    {
        FakeCocoaSecrets keychain;
        keychain.put(item(kService, "token"));
        MacSecretStore store(keychain);
        std::stop_source stop;

        const Outcome read(store.read(kService, kAccount, stop.get_token()));
        stop.request_stop();
        QTRY_VERIFY(read.isThere());

        QCOMPARE(*read, std::nullopt);
    }

    void aLookSaysWhatTheKeychainSays_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<SecretStore::Finding>("expected");
        QTest::newRow("not found") << -25300 << SecretStore::Finding::noItem;
        QTest::newRow("no interaction allowed") << -25308 << SecretStore::Finding::locked;
        QTest::newRow("wrong password") << -25293 << SecretStore::Finding::refused;
        QTest::newRow("cancelled by the viewer") << -128 << SecretStore::Finding::refused;
        QTest::newRow("no keychain") << -25307 << SecretStore::Finding::absent;
    }

    void aLookSaysWhatTheKeychainSays()
    {
        QFETCH(const int, status);
        QFETCH(const SecretStore::Finding, expected);
        FakeCocoaSecrets keychain;
        keychain.refusal = status;
        MacSecretStore store(keychain);

        const Outcome found(store.look(kService, kAccount));
        QTRY_VERIFY(found.isThere());

        QCOMPARE(*found, expected);
    }

    void aLookFindsAnItem()
    {
        FakeCocoaSecrets keychain;
        keychain.put(item(kService, "token"));
        MacSecretStore store(keychain);

        const Outcome found(store.look(kService, kAccount));
        QTRY_VERIFY(found.isThere());

        QCOMPARE(*found, SecretStore::Finding::item);
    }

    void writingTwiceLeavesOneItem()
    {
        FakeCocoaSecrets keychain;
        MacSecretStore store(keychain);
        const Keychain tokens(store);

        const Outcome first(tokens.writeToken(Secret("one"), kService, {}));
        QTRY_VERIFY(first.isThere());
        const Outcome second(tokens.writeToken(Secret("two"), kService, {}));
        QTRY_VERIFY(second.isThere());

        QCOMPARE(keychain.items(), (std::vector {item(kService, "two")}));
    }

    void bytesThatAreNoTextAreNoToken()
    {
        FakeCocoaSecrets keychain;
        keychain.put(item(kService, "\xff\xfe"));
        MacSecretStore store(keychain);

        const Outcome token(Keychain(store).readToken(kService, {}));
        QTRY_VERIFY(token.isThere());

        QCOMPARE(*token, std::nullopt);
    }

    void theOlderItemIsCopiedAndNeverTouched()
    {
        FakeCocoaSecrets keychain;
        keychain.put(item(kOlderService, "old"));
        MacSecretStore store(keychain);

        const Outcome token(Keychain(store).deviceToken({}));
        QTRY_VERIFY(token.isThere());

        QCOMPARE(*token, Secret("old"));
        QCOMPARE(keychain.items(), (std::vector {item(kOlderService, "old"), item(kService, "old")}));
        const auto changed = keychain.changed();
        QVERIFY(std::ranges::find(changed, kOlderService.toStdString()) == changed.end());
    }

    void theItemsOfAProfileHaveAnotherName()
    {
        FakeCocoaSecrets keychain;
        keychain.put(item(kService, "mine"));
        MacSecretStore store(keychain, u".0123"_s);

        const Outcome before(store.read(kService, kAccount, {}));
        QTRY_VERIFY(before.isThere());
        const Outcome added(store.add(kService, kAccount, Secret("other")));
        QTRY_VERIFY(added.isThere());

        QCOMPARE(*before, std::nullopt);
        QCOMPARE(keychain.items(), (std::vector {item(kService, "mine"), item(kService + u".0123"_s, "other")}));
    }
};

QTEST_GUILESS_MAIN(MacSecretStoreTest)

#include "MacSecretStoreTest.moc"
