#include "core/Keychain.h"
#include "support/FakePlatform.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// The value of a task that does not have to wait.
template <class T> T finished(QCoro::Task<T> task)
{
    std::optional<T> value;
    [](QCoro::Task<T> running, std::optional<T>& result) -> QCoro::Task<> {
        auto answer = co_await running;
        result = std::move(answer);
    }(std::move(task), value);
    if (!value)
        qFatal("The task still waits.");
    return *std::move(value);
}

} // namespace

class KeychainTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void anItemReadsAsItsText()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kService,
            "s\xc3\xa9"
            "cret");

        QCOMPARE(finished(Keychain(secrets).readToken(Keychain::kService, {})),
            Secret("s\xc3\xa9"
                   "cret"));
    }

    void noItemReadsAsNone()
    {
        FakeSecrets secrets;

        QVERIFY(!finished(Keychain(secrets).readToken(Keychain::kService, {})));
    }

    void anEmptyItemIsAToken()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kService, "");

        QCOMPARE(finished(Keychain(secrets).readToken(Keychain::kService, {})), Secret(""));
    }

    void anItemThatIsNotUtf8ReadsAsNone()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kService, "\xff\xfe");

        QVERIFY(!finished(Keychain(secrets).readToken(Keychain::kService, {})));
        QVERIFY(!finished(Keychain(secrets).deviceToken({})));
    }

    void writingTheSameTokenTwiceLeavesOneItem()
    {
        FakeSecrets secrets;
        const Keychain keychain(secrets);

        keychain.writeToken(Secret("t"), Keychain::kService, {});
        keychain.writeToken(Secret("t"), Keychain::kService, {});

        QCOMPARE(secrets.items(Keychain::kService), std::vector<QByteArray> {"t"});
    }

    void writingRemovesTheOldItemFirst()
    {
        FakeSecrets secrets;

        Keychain(secrets).writeToken(Secret("t"), Keychain::kService, {});

        QCOMPARE(secrets.operations, (QStringList {u"remove orvella.device-token"_s, u"add orvella.device-token"_s}));
    }

    void aStoppedWriteAddsNothing()
    {
        FakeSecrets secrets;
        std::stop_source stop;
        stop.request_stop();

        Keychain(secrets).writeToken(Secret("t"), Keychain::kService, stop.get_token());

        QVERIFY(secrets.items(Keychain::kService).empty());
        QVERIFY(!secrets.operations.contains(u"add orvella.device-token"_s));
    }

    void aTokenThatIsNotUtf8IsNotWrittenAndTheOldOneStays()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kService, "old");

        Keychain(secrets).writeToken(Secret("\xff"), Keychain::kService, {});

        QCOMPARE(secrets.items(Keychain::kService), std::vector<QByteArray> {"old"});
    }

    void deletingRemovesOnlyTheNamedItem()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kService, "new");
        secrets.put(Keychain::kLegacyService, "old");

        Keychain(secrets).deleteToken(Keychain::kService);

        QVERIFY(secrets.items(Keychain::kService).empty());
        QCOMPARE(secrets.items(Keychain::kLegacyService), std::vector<QByteArray> {"old"});
    }

    void withBothItemsOnlyTheCurrentOneIsRead()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kService, "new");
        secrets.put(Keychain::kLegacyService, "old");

        QCOMPARE(finished(Keychain(secrets).deviceToken({})), Secret("new"));
        QCOMPARE(secrets.operations, QStringList {u"read orvella.device-token"_s});
    }

    void aTokenUnderTheOldNameIsCopiedAndTheOldItemStays()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kLegacyService, "old");

        QCOMPARE(finished(Keychain(secrets).deviceToken({})), Secret("old"));

        QCOMPARE(secrets.items(Keychain::kService), std::vector<QByteArray> {"old"});
        QCOMPARE(secrets.items(Keychain::kLegacyService), std::vector<QByteArray> {"old"});
    }

    void theOldNameIsNeverWrittenOrDeleted()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kLegacyService, "old");
        const Keychain keychain(secrets);

        static_cast<void>(finished(keychain.deviceToken({})));
        keychain.writeToken(Secret("new"), Keychain::kService, {});
        keychain.deleteToken(Keychain::kService);

        for (const auto& operation : secrets.operations)
            QVERIFY(!operation.endsWith(Keychain::kLegacyService) || operation.startsWith(u"read "));
    }

    void aFailedWriteIsSilent()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kLegacyService, "old");
        secrets.refusesWrites = true;

        QCOMPARE(finished(Keychain(secrets).deviceToken({})), Secret("old"));
        QVERIFY(secrets.items(Keychain::kService).empty());
    }

    void aStoppedReadAnswersNothingAndWritesNothing()
    {
        FakeSecrets secrets;
        secrets.put(Keychain::kLegacyService, "old");
        secrets.isLocked = true;
        std::stop_source source;
        std::optional<bool> found;
        [](Keychain keychain, std::stop_token stop, std::optional<bool>& result) -> QCoro::Task<> {
            const auto token = co_await keychain.deviceToken(stop);
            result = token.has_value();
        }(Keychain(secrets), source.get_token(), found);
        QVERIFY(!found);

        source.request_stop();

        QCOMPARE(found, false);
        secrets.unlock();
        QCOMPARE(secrets.operations, QStringList {u"read orvella.device-token"_s});
    }
};

QTEST_GUILESS_MAIN(KeychainTest)

#include "KeychainTest.moc"
