#include "api/Endpoints.h"
#include "core/AppState.h"
#include "platform/linux/secrets/SystemSecretStore.h"
#include "support/FakePlatform.h"
#include "support/FakeSecretService.h"
#include "support/FakeTransport.h"

#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

enum class Kind { file, system, systemWithKeyring, keyring };

/// A state over a real store, which end together.
struct Run {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<SecretStore> secrets;
    std::unique_ptr<AppState> state;

    Run(Kind kind, const QString& folder)
    {
        if (kind == Kind::file)
            secrets = std::make_unique<FileSecretStore>(folder);
        else if (kind == Kind::keyring)
            secrets = std::make_unique<KeyringSecretStore>(platform.clock);
        else
            secrets = std::make_unique<SystemSecretStore>(platform.clock, folder);
        const auto fake = platform.lend();
        const Platform lent {fake.clock, fake.settings, *secrets, fake.loginItem, fake.locale, fake.device,
            fake.applications, fake.browser, fake.statusItem, fake.windows, fake.look, fake.foreground, fake.updater,
            fake.report, fake.proxies};
        transport.answerEverything();
        state = std::make_unique<AppState>(lent, transport);
        state->bootstrap();
    }

    ~Run()
    {
        state.reset();
        secrets.reset();
    }

    [[nodiscard]] bool isStarted() const { return transport.count(endpoints::kAdsAvailable) > 0; }
};

/// One thing after the other that the program waits for comes.
void step()
{
    QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
}

} // namespace

/// The program ends while a new device is being registered and its token written.
class EndInRegistrationTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void init() { m_folder = std::make_unique<QTemporaryDir>(); }

    void nothingOfTheRunIsTouchedWhereverItEnds_data()
    {
        QTest::addColumn<Kind>("kind");
        QTest::newRow("the file") << Kind::file;
        QTest::newRow("the file, for there is no keyring") << Kind::system;
        QTest::newRow("the keyring, with its mark") << Kind::systemWithKeyring;
        QTest::newRow("the keyring") << Kind::keyring;
    }

    /// The sanitizers see what is touched.
    void nothingOfTheRunIsTouchedWhereverItEnds()
    {
        QFETCH(const Kind, kind);
        FakeSecretService service;
        if (kind == Kind::keyring || kind == Kind::systemWithKeyring)
            service.start();

        auto isStarted = false;
        for (int steps = 0; !isStarted; ++steps) {
            QVERIFY(QDir(m_folder->path()).removeRecursively());
            service.items.clear();
            Run run(kind, m_folder->path());
            for (int done = 0; done < steps && !run.isStarted(); ++done)
                step();
            isStarted = run.isStarted();
        }

        QTest::qWait(0);
    }

    void aTokenIsNotWrittenOnceTheRunIsOver()
    {
        FakeSecretService service;
        service.fail(u"CreateItem"_s, FakeSecretService::Fault::silence);
        service.start();
        {
            Run run(Kind::systemWithKeyring, m_folder->path());
            QTRY_COMPARE(service.calls(u"CreateItem"_s), 1);
        }

        QTest::qWait(0);

        QVERIFY(QDir(m_folder->path()).isEmpty());
    }

    void aStateThatGoesBeforeItsStoreLeavesItInOrder()
    {
        auto isStarted = false;
        for (int steps = 0; !isStarted; ++steps) {
            QVERIFY(QDir(m_folder->path()).removeRecursively());
            Run run(Kind::file, m_folder->path());
            for (int done = 0; done < steps && !run.isStarted(); ++done)
                step();
            isStarted = run.isStarted();
            run.state.reset();
            QTest::qWait(0);
        }
        QCOMPARE(QDir(m_folder->path()).entryList(QDir::Files), QStringList {u"secrets.json"_s});
    }

private:
    std::unique_ptr<QTemporaryDir> m_folder;
};

QTEST_GUILESS_MAIN(EndInRegistrationTest)

#include "EndInRegistrationTest.moc"
