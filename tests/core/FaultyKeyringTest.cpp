#include "api/Endpoints.h"
#include "core/AppState.h"
#include "platform/linux/secrets/SystemSecretStore.h"
#include "support/FakePlatform.h"
#include "support/FakeSecretService.h"
#include "support/FakeTransport.h"

#include <QDBusConnection>
#include <QDBusConnectionInterface>
#include <QDeadlineTimer>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <map>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

using Fault = FakeSecretService::Fault;

constexpr int kPatienceMs = 20'000;
constexpr int kWakeUpMs = 50;
/// Between two attempts.
constexpr Clock::duration kLongestPause = 4s;

/// The bus may not know yet that a service has gone.
bool isNameTaken()
{
    return QDBusConnection::sessionBus().interface()->isServiceRegistered(u"org.freedesktop.secrets"_s);
}

enum class Before { noItem, notUtf8, item, lockedItem };

/// One run of the program over the keyring of the session.
struct Run {
    FakePlatform platform;
    FakeTransport transport;
    SystemSecretStore secrets;
    std::unique_ptr<AppState> state;

    explicit Run(const QString& folder)
        : secrets(platform.clock, folder)
    {
        const auto fake = platform.lend();
        const Platform lent {fake.clock, fake.settings, secrets, fake.loginItem, fake.locale, fake.device,
            fake.applications, fake.browser, fake.statusItem, fake.windows, fake.look, fake.foreground, fake.updater,
            fake.report, fake.proxies};
        transport.answerEverything();
        state = std::make_unique<AppState>(lent, transport);
        state->bootstrap();
    }

    [[nodiscard]] bool isStarted() const { return transport.count(endpoints::kAdsAvailable) > 0; }

    /// Whether it starts. The pauses between two attempts pass at once, a limit when the keyring has kept silent.
    /// A keyring that has died is there again where it `returns`.
    bool starts(FakeSecretService& service, bool returns = false)
    {
        auto answered = service.unanswered();
        QTimer wakeUp;
        wakeUp.start(kWakeUpMs);
        for (const QDeadlineTimer end(kPatienceMs); !isStarted() && !end.hasExpired();) {
            QCoreApplication::processEvents(QEventLoop::WaitForMoreEvents);
            if (returns && !FakeSecretService::isThere() && !isNameTaken())
                service.start();
            if (service.prompts() > 0) {
                platform.clock.advance(1s);
                service.agree();
            }
            const auto pause = platform.clock.nextPause();
            const auto isSilent = service.unanswered() > answered;
            if (isStarted() || !pause || (*pause > kLongestPause && !isSilent))
                continue;
            answered += isSilent ? 1 : 0;
            platform.clock.advance(*pause);
        }
        return isStarted();
    }

    /// Which device asked for an ad; empty where it did not say.
    [[nodiscard]] QByteArray device() const
    {
        return transport.requests(endpoints::kAdsAvailable).front().header("authorization").value_or(QByteArray());
    }
};

} // namespace

/// Starts of the program over a keyring that fails at one call or another, and the start after.
class FaultyKeyringTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void oneDeviceIsRegisteredAtMostAndItsTokenKept_data()
    {
        QTest::addColumn<QString>("method");
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<int>("times");
        QTest::addColumn<Before>("before");
        const std::map<Fault, const char*> faults {
            {Fault::silence, "is silent"}, {Fault::error, "fails"}, {Fault::death, "dies"}};
        const std::map<Before, const char*> contents {{Before::noItem, "empty"}, {Before::notUtf8, "with bytes"},
            {Before::item, "with a token"}, {Before::lockedItem, "locked"}};
        // Those of them that come to each call.
        const std::map<const char*, std::vector<Before>> methods {
            {"OpenSession", {Before::noItem, Before::item}},
            {"SearchItems", {Before::noItem, Before::notUtf8, Before::item, Before::lockedItem}},
            {"ReadAlias", {Before::noItem, Before::notUtf8}},
            {"Get", {Before::noItem, Before::notUtf8}},
            {"CreateItem", {Before::noItem, Before::notUtf8}},
            {"GetSecrets", {Before::notUtf8, Before::item, Before::lockedItem}},
            {"Delete", {Before::notUtf8}},
            {"Unlock", {Before::lockedItem}},
            {"Prompt", {Before::lockedItem}},
        };
        for (const auto& [method, comers] : methods)
            for (const auto before : comers)
                for (const auto& [fault, name] : faults)
                    for (const auto times : {1, 1000})
                        QTest::addRow(
                            "%s, %s, %s at %s", contents.at(before), name, times == 1 ? "once" : "always", method)
                            << QString::fromLatin1(method) << fault << times << before;
    }

    void oneDeviceIsRegisteredAtMostAndItsTokenKept()
    {
        QFETCH(const QString, method);
        QFETCH(const Fault, fault);
        QFETCH(const int, times);
        QFETCH(const Before, before);
        const QTemporaryDir folder;
        FakeSecretService service;
        if (before == Before::notUtf8)
            service.put(Keychain::kService, "\xff\xfe");
        else if (before != Before::noItem)
            service.put(Keychain::kService, "token-0");
        service.isLocked = before == Before::lockedItem;
        service.fail(method, fault, times);
        service.start();
        const auto hasToken = before == Before::item || before == Before::lockedItem;

        qsizetype registrations = 0;
        QByteArray first;
        {
            Run run(folder.path());
            QVERIFY(run.starts(service, times == 1));
            registrations = run.transport.count(endpoints::kRegister);
            first = run.device();
        }
        QVERIFY(service.calls(method) > 0);
        // Anything but silence is met with another attempt.
        const auto isRead = hasToken && times == 1 && fault != Fault::silence;
        QVERIFY(registrations == (isRead ? 0 : 1) || (hasToken && registrations == 0));
        QCOMPARE(first, registrations == 1 ? "Bearer token-1" : "Bearer token-0");

        service.recover();
        if (!FakeSecretService::isThere())
            service.start();
        Run next(folder.path());
        QVERIFY(next.starts(service));
        QVERIFY(next.device() == first || (hasToken && next.device() == "Bearer token-0"));
        // Bytes that are no token are an item of the keyring all the same, and go before one of the file.
        QVERIFY(next.transport.count(endpoints::kRegister) <= (before == Before::notUtf8 ? 1 : 0));
        Run last(folder.path());
        QVERIFY(last.starts(service));
        QCOMPARE(last.transport.count(endpoints::kRegister), 0);
        QCOMPARE(last.device(), next.device());
    }

    void aTokenThatCouldNotBeReadGoesOnlyOnceTheNewOneIsWritten_data()
    {
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<int>("times");
        QTest::addColumn<std::vector<QByteArray>>("left");
        const std::vector<QByteArray> older {"token-0", "token-2"};
        const std::vector<QByteArray> newer {"token-1"};
        QTest::newRow("written") << Fault::error << 0 << newer;
        QTest::newRow("written at the second attempt") << Fault::error << 1 << newer;
        QTest::newRow("refused") << Fault::error << 1000 << older;
        QTest::newRow("without an answer") << Fault::silence << 1000 << older;
        QTest::newRow("the keyring dies") << Fault::death << 1000 << older;
    }

    void aTokenThatCouldNotBeReadGoesOnlyOnceTheNewOneIsWritten()
    {
        QFETCH(const Fault, fault);
        QFETCH(const int, times);
        QFETCH(const std::vector<QByteArray>, left);
        const QTemporaryDir folder;
        FakeSecretService service;
        service.put(Keychain::kService, "token-0");
        service.put(Keychain::kService, "token-2");
        service.items.rbegin()->second.attributes.insert(u"xdg:schema"_s, u"org.example.Other"_s);
        service.fail(u"SearchItems"_s, Fault::silence, 1);
        service.fail(u"CreateItem"_s, fault, times);
        service.start();

        Run run(folder.path());
        QVERIFY(run.starts(service));

        QCOMPARE(run.transport.count(endpoints::kRegister), 1);
        QCOMPARE(run.device(), "Bearer token-1");
        std::vector<QByteArray> secrets;
        for (const auto& [path, item] : service.items)
            secrets.push_back(item.secret);
        QCOMPARE(secrets, left);
    }

    void ofTwoItemsOneIsUsedAndANewTokenReplacesBoth()
    {
        const QTemporaryDir folder;
        FakeSecretService service;
        service.put(Keychain::kService, "token-0");
        service.put(Keychain::kService, "token-2");
        service.items.rbegin()->second.attributes.insert(u"xdg:schema"_s, u"org.example.Other"_s);
        service.start();
        Run run(folder.path());
        QVERIFY(run.starts(service));
        QCOMPARE(run.transport.count(endpoints::kRegister), 0);
        QCOMPARE(run.device(), "Bearer token-0");

        Keychain(run.secrets).writeToken(Secret("token-1"), Keychain::kService, {});

        QTRY_COMPARE(service.items.size() == 1 ? service.items.begin()->second.secret : QByteArray(), "token-1");
    }
};

QTEST_GUILESS_MAIN(FaultyKeyringTest)

#include "FaultyKeyringTest.moc"
