#include "api/Endpoints.h"
#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakePlatform platform;
    FakeTransport transport;
    std::unique_ptr<AppState> state;

    World() { transport.answerEverything(); }

    void start()
    {
        state = std::make_unique<AppState>(platform.lend(), transport);
        state->bootstrap();
        settle();
    }
};

} // namespace

class BootstrapTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void aKnownDeviceDoesNotRegisterAgain()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");

        world.start();

        QCOMPARE(world.transport.paths(),
            (QStringList {endpoints::kWallet, endpoints::kHeartbeat, endpoints::kHeartbeat, endpoints::kAdsAvailable}));
        QCOMPARE(world.transport.requests().front().header("authorization"), "Bearer token");
        QVERIFY(!world.state->activationCode());
        QVERIFY(!world.state->verificationUri());
    }

    void aNormalStartSendsTwoHeartbeatsInQuickSuccession()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");

        world.start();

        QCOMPARE(world.transport.count(endpoints::kHeartbeat), 2);
    }

    void aNewDeviceRegistersKeepsItsTokenAndPublishesHowToLinkIt()
    {
        World world;

        world.start();

        QCOMPARE(world.transport.paths().first(), endpoints::kRegister);
        QVERIFY(!world.transport.requests().front().header("authorization"));
        QCOMPARE(world.platform.secrets.items(Keychain::kService), std::vector<QByteArray> {"token-1"});
        QCOMPARE(world.state->activationCode(), u"KX4M-9TQ2"_s);
        QCOMPARE(world.state->verificationUri(), u"https://service.test/activate?code=KX4M-9TQ2"_s);
        QCOMPARE(world.state->pollSeconds(), 120);
        QCOMPARE(world.transport.requests(endpoints::kWallet).front().header("authorization"), "Bearer token-1");
        QCOMPARE(world.state->statusTitle(), u"$6.37"_s);
    }

    void theTokenIsReplacedBeforeTheCodeIsPublished()
    {
        World world;
        world.state = std::make_unique<AppState>(world.platform.lend(), world.transport);
        QStringList operationsAtTheCode;
        connect(world.state.get(), &Observable::willChange, world.state.get(), [&] {
            if (!world.state->activationCode())
                operationsAtTheCode = world.platform.secrets.operations;
        });

        world.state->bootstrap();
        settle();

        const QStringList expected {u"read orvella.device-token"_s, u"read quillon.device-token"_s,
            u"remove orvella.device-token"_s, u"remove orvella.device-token"_s, u"add orvella.device-token"_s};
        QCOMPARE(operationsAtTheCode, expected);
    }

    void theRegistrationSaysWhatTheServiceExpects()
    {
        World world;
        world.platform.settings.values = {{u"anonymousMode"_s, false}, {u"autoOpenAds"_s, true}};

        world.start();

        const Json::Object expected {
            {u"deviceName"_s, u"Desk"_s},
            {u"appVersion"_s, u"1.2.3"_s},
            {u"anonymousMode"_s, false},
            {u"appSignalConsent"_s, false},
            {u"autoOpenAds"_s, true},
            {u"language"_s, u"de"_s},
        };
        QCOMPARE(world.transport.requests().front().body, expected);
    }

    void aFailedRegistrationEndsTheStart()
    {
        World world;
        world.transport.fail(endpoints::kRegister, u"No network."_s);

        world.start();
        world.platform.clock.advance(24h);

        QCOMPARE(world.state->statusTitle(), u"OFF"_s);
        QCOMPARE(world.state->lastError(), u"No network."_s);
        QCOMPARE(world.transport.paths(), QStringList {endpoints::kRegister});
        QVERIFY(world.platform.secrets.items(Keychain::kService).empty());
    }

    void afterAFailedRegistrationAChangedSettingIsStillSent()
    {
        World world;
        world.transport.fail(endpoints::kRegister, u"No network."_s);
        world.start();

        world.state->autoOpenAds = true;
        settle();

        QCOMPARE(world.transport.paths(), (QStringList {endpoints::kRegister, endpoints::kPreferences}));
        QVERIFY(!world.transport.requests().back().header("authorization"));
        QCOMPARE(world.state->statusTitle(), u"OFF"_s);
    }

    void aTokenUnderTheOldNameIsCopiedAndNothingIsRegistered()
    {
        World world;
        world.platform.secrets.put(Keychain::kLegacyService, "old");

        world.start();

        QCOMPARE(world.transport.count(endpoints::kRegister), 0);
        QCOMPARE(world.platform.secrets.items(Keychain::kService), std::vector<QByteArray> {"old"});
        QCOMPARE(world.platform.secrets.items(Keychain::kLegacyService), std::vector<QByteArray> {"old"});
    }

    void aTokenThatIsNotUtf8MeansANewRegistration()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "\xff");

        world.start();

        QCOMPARE(world.transport.count(endpoints::kRegister), 1);
        QCOMPARE(world.platform.secrets.items(Keychain::kService), std::vector<QByteArray> {"token-1"});
    }

    void theRegistrationsPauseIsKeptInBounds_data()
    {
        QTest::addColumn<qint64>("registered");
        QTest::addColumn<qint64>("expected");

        QTest::newRow("far too short") << qint64 {5} << qint64 {60};
        QTest::newRow("just too short") << qint64 {59} << qint64 {60};
        QTest::newRow("shortest") << qint64 {60} << qint64 {60};
        QTest::newRow("longest") << qint64 {900} << qint64 {900};
        QTest::newRow("just too long") << qint64 {901} << qint64 {900};
        QTest::newRow("far too long") << qint64 {3600} << qint64 {900};
        QTest::newRow("negative") << std::numeric_limits<qint64>::min() << qint64 {60};
        QTest::newRow("huge") << std::numeric_limits<qint64>::max() << qint64 {900};
    }

    void theRegistrationsPauseIsKeptInBounds()
    {
        QFETCH(qint64, registered);
        QFETCH(qint64, expected);
        World world;
        auto registration = aRegistration();
        registration.pollSeconds = registered;
        world.transport.answer(endpoints::kRegister, registration);

        world.start();

        QCOMPARE(world.state->pollSeconds(), expected);
    }

    void aFailedWalletDoesNotStopTheStartAndLeavesNoError()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");
        world.transport.fail(endpoints::kWallet, u"No network."_s);
        const auto heartbeat = world.transport.hold(endpoints::kHeartbeat);

        world.start();
        QCOMPARE(world.state->lastError(), u"No network."_s);
        auto reply = heartbeat;
        auto secondHeartbeat = world.transport.hold(endpoints::kHeartbeat);
        reply.give(failed(Failure::Kind::unreachable, u"Still none."_s));

        QVERIFY(secondHeartbeat.isAwaited());
        QVERIFY(!world.state->lastError());
    }

    void nothingIsAskedWhileTheKeyringIsLocked()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");
        world.platform.secrets.isLocked = true;

        world.start();
        world.platform.clock.advance(1h);
        QVERIFY(world.transport.requests().empty());
        QVERIFY(!world.state->lastError());

        world.platform.secrets.unlock();
        settle();
        QCOMPARE(world.transport.count(endpoints::kRegister), 0);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);
    }

    void aKeyringThatKeepsNothingDoesNotStopTheStart()
    {
        World world;
        world.platform.secrets.refusesWrites = true;

        world.start();

        QCOMPARE(world.transport.count(endpoints::kRegister), 1);
        QCOMPARE(world.transport.count(endpoints::kAdsAvailable), 1);
        QVERIFY(!world.transport.requests(endpoints::kWallet).front().header("authorization"));
    }
};

QTEST_GUILESS_MAIN(BootstrapTest)

#include "BootstrapTest.moc"
