#include "platform/linux/secrets/KeyringSecretStore.h"
#include "support/AllocatedBytes.h"
#include "support/KeyringDaemon.h"
#include "support/Outcome.h"
#include "support/ScriptedPrompter.h"

#include <QDir>
#include <QTest>

#include <memory>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

const auto kService = u"orvella.device-token"_s;
const auto kOlderService = u"quillon.device-token"_s;
const auto kAccount = u"default"_s;

} // namespace

/// The store and the real daemon that most desktops have.
class KeyringSecretStoreTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void init()
    {
        daemon = std::make_unique<KeyringDaemon>();
        QVERIFY(daemon->start());
        prompter = std::make_unique<ScriptedPrompter>();
        store = std::make_unique<KeyringSecretStore>(clock);
    }

    void cleanup()
    {
        store.reset();
        prompter.reset();
        daemon.reset();
    }

    void whatWasAddedIsRead()
    {
        add(kService, "token-1");

        QCOMPARE(read(kService), "token-1");
    }

    void anItemOfAnotherServiceOrAccountIsNotRead()
    {
        add(kOlderService, "token-1");
        KeyringDaemon::secretTool({u"store"_s, u"--label=x"_s, u"service"_s, kService, u"account"_s, u"other"_s}, "x");

        QVERIFY(!read(kService));
    }

    void whatWasRemovedIsGone()
    {
        add(kService, "token-1");
        add(kOlderService, "token-2");

        remove(kService);

        QVERIFY(!read(kService));
        QCOMPARE(read(kOlderService), "token-2");
    }

    void removingNothingDoesNothing()
    {
        remove(kService);

        QVERIFY(!read(kService));
    }

    void writingTwiceLeavesOneItem()
    {
        add(kService, "token-1");
        remove(kService);
        add(kService, "token-1");

        QCOMPARE(items(), 1);
    }

    void addingTwiceLeavesTheLaterItemOnly()
    {
        add(kService, "token-1");
        add(kService, "token-2");

        QCOMPARE(items(), 1);
        QCOMPARE(read(kService), "token-2");
    }

    void bytesOfAnyKindComeBackAsTheyWere_data()
    {
        QTest::addColumn<QByteArray>("bytes");
        QTest::newRow("none") << QByteArray();
        QTest::newRow("beyond ASCII") << u"gr\u00fcn \U0001f511"_s.toUtf8();
        QTest::newRow("not UTF-8") << QByteArray("\xff\xfe\xc3");
        QTest::newRow("zeros and line ends") << QByteArray("a\0b\r\n\0", 6);
        QTest::newRow("many") << QByteArray(100'000, 'x');
    }

    void bytesOfAnyKindComeBackAsTheyWere()
    {
        QFETCH(const QByteArray, bytes);

        add(kService, bytes);

        QCOMPARE(read(kService), bytes);
    }

    void secretToolShowsTheToken()
    {
        add(kService, "token-1");

        QCOMPARE(KeyringDaemon::secretTool({u"lookup"_s, u"service"_s, kService, u"account"_s, kAccount}), "token-1");
    }

    void whatSecretToolStoredIsReadAndRemoved()
    {
        KeyringDaemon::secretTool(
            {u"store"_s, u"--label=x"_s, u"service"_s, kService, u"account"_s, kAccount}, "token-1");
        QCOMPARE(read(kService), "token-1");

        remove(kService);

        QCOMPARE(items(), 0);
    }

    void itemsWithFurtherAttributesAreFoundByTheTwo()
    {
        KeyringDaemon::secretTool(
            {u"store"_s, u"--label=x"_s, u"service"_s, kService, u"account"_s, kAccount, u"more"_s, u"y"_s}, "token-1");

        QCOMPARE(read(kService), "token-1");
    }

    void readingOverAndOverLeavesNothingBehind_data()
    {
        QTest::addColumn<bool>("isThere");
        QTest::newRow("an item") << true;
        QTest::newRow("no item") << false;
    }

    void readingOverAndOverLeavesNothingBehind()
    {
        QFETCH(const bool, isThere);
        // About a hundred bytes for each reading: what a library keeps once, it may get at any time.
        constexpr std::size_t kNoise = 8 * 1024;
        if (isThere)
            add(kService, "token-1");

        readOften(20, isThere);
        const auto before = allocatedBytes();
        readOften(80, isThere);
        const auto after = allocatedBytes();

        qInfo("%zu bytes after 20 readings, %zu after 100", before, after);
        QVERIFY(after < before + kNoise);
    }

    void aLockedKeyringIsReadOnceTheViewerHasUnlockedIt()
    {
        add(kService, "token-1");
        QVERIFY(daemon->lock());

        const Outcome outcome(store->read(kService, kAccount, {}));
        QTRY_COMPARE(prompter->up(), 1);
        QVERIFY(!outcome.isThere());
        prompter->enter(KeyringDaemon::kPassword);

        QTRY_VERIFY(outcome.isThere());
        QVERIFY(*outcome);
        QCOMPARE((*outcome)->reveal(), "token-1");
    }

    void aLockedKeyringThatTheViewerDoesNotUnlockReadsAsEmptyAndIsNotAskedForAgain()
    {
        add(kService, "token-1");
        QVERIFY(daemon->lock());

        const Outcome outcome(store->read(kService, kAccount, {}));
        QTRY_COMPARE(prompter->up(), 1);
        // As long as a viewer takes at least.
        QTest::qWait(1000);
        prompter->dismiss();

        QTRY_VERIFY(outcome.isThere());
        QVERIFY(!*outcome);
        QVERIFY(!read(kService));
        remove(kService);
        add(kService, "token-2");
        QCOMPARE(prompter->shown(), 1);
        QVERIFY(daemon->isLocked());
    }

    void aKeyringThatCannotAskYetIsAskedAgain()
    {
        add(kService, "token-1");
        QVERIFY(daemon->lock());
        prompter.reset();
        const Outcome outcome(store->readItem(kService, kAccount, {}));
        QTest::qWait(500);
        QVERIFY(!outcome.isThere());

        prompter = std::make_unique<ScriptedPrompter>();
        QTRY_COMPARE(prompter->up(), 1);
        prompter->enter(KeyringDaemon::kPassword);

        QTRY_VERIFY(outcome.isThere());
        QVERIFY(*outcome && **outcome);
        QCOMPARE((**outcome)->reveal(), "token-1");
    }

    void aStoreThatGoesAwayEndsWhatWaitsAndLeavesThePromptToTheViewer()
    {
        add(kService, "token-1");
        QVERIFY(daemon->lock());
        const Outcome outcome(store->read(kService, kAccount, {}));
        QTRY_COMPARE(prompter->up(), 1);

        store.reset();

        QVERIFY(outcome.isThere());
        QVERIFY(!*outcome);
        QCOMPARE(prompter->up(), 1);
        prompter->enter(KeyringDaemon::kPassword);
        QTRY_VERIFY(!daemon->isLocked());
    }

    void aTokenIsAddedOnceTheViewerHasUnlockedTheKeyring()
    {
        QVERIFY(daemon->lock());

        const Outcome outcome(store->add(kService, kAccount, Secret("token-1")));
        QTRY_COMPARE(prompter->up(), 1);
        prompter->enter(KeyringDaemon::kPassword);

        QTRY_VERIFY(outcome.isThere());
        QCOMPARE(read(kService), "token-1");
    }

    void theFirstItemMakesTheKeyringOnceTheViewerHasGivenItAPassword()
    {
        daemon->kill();
        QVERIFY(QDir(qEnvironmentVariable("XDG_DATA_HOME")).removeRecursively());
        QVERIFY(daemon->startWithoutKeyring());
        QVERIFY(!read(kService));
        QCOMPARE(prompter->shown(), 0);

        const Outcome outcome(store->add(kService, kAccount, Secret("token-1")));
        QTRY_COMPARE(prompter->up(), 1);
        prompter->enter(KeyringDaemon::kPassword);

        QTRY_VERIFY(outcome.isThere());
        QCOMPARE(read(kService), "token-1");
    }

    void aDaemonThatIsStartedAgainIsUsedAgain()
    {
        add(kService, "token-1");
        daemon->kill();
        QVERIFY(daemon->start());

        QCOMPARE(read(kService), "token-1");
    }

    void withoutADaemonThereIsNoToken()
    {
        daemon->kill();

        QVERIFY(!read(kService));
    }

private:
    void add(const QString& service, const QByteArray& value)
    {
        const Outcome outcome(store->add(service, kAccount, Secret(value)));
        QTRY_VERIFY_WITH_TIMEOUT(outcome.isThere(), 20000);
    }

    void remove(const QString& service)
    {
        const Outcome outcome(store->remove(service, kAccount));
        QTRY_VERIFY_WITH_TIMEOUT(outcome.isThere(), 20000);
    }

    std::optional<QByteArray> read(const QString& service)
    {
        const Outcome outcome(store->read(service, kAccount, {}));
        const auto isOver = QTest::qWaitFor([&] { return outcome.isThere(); }, 20000);
        if (!isOver)
            qFatal("The store does not answer.");
        return *outcome ? std::optional((*outcome)->reveal()) : std::nullopt;
    }

    void readOften(int times, bool isThere)
    {
        for (int i = 0; i < times; ++i)
            QCOMPARE(read(kService).has_value(), isThere);
    }

    /// How many items there are for the service, as secret-tool sees it.
    qsizetype items()
    {
        const auto found =
            KeyringDaemon::secretTool({u"search"_s, u"--all"_s, u"service"_s, kService, u"account"_s, kAccount});
        return found.count("label = ");
    }

    SystemClock clock;
    std::unique_ptr<KeyringDaemon> daemon;
    std::unique_ptr<ScriptedPrompter> prompter;
    std::unique_ptr<KeyringSecretStore> store;
};

QTEST_GUILESS_MAIN(KeyringSecretStoreTest)

#include "KeyringSecretStoreTest.moc"
