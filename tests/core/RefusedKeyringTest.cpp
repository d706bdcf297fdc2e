#include "api/Endpoints.h"
#include "core/AppState.h"
#include "platform/linux/secrets/SystemSecretStore.h"
#include "support/FakePlatform.h"
#include "support/FakeSecretService.h"
#include "support/FakeTransport.h"

#include <QTemporaryDir>
#include <QTest>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::Literals::StringLiterals;

namespace {

constexpr int kPatienceMs = 20'000;

} // namespace

/// A start whose viewer does not unlock the keyring.
class RefusedKeyringTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void theNewDeviceAsksWithItsToken()
    {
        const QTemporaryDir home;
        FakePlatform platform;
        FakeTransport transport;
        transport.answerEverything();
        FakeSecretService service;
        service.put(Keychain::kService, "token-0");
        service.isLocked = true;
        service.start();
        SystemSecretStore secrets(platform.clock, home.path());
        const auto fake = platform.lend();
        const Platform lent {fake.clock, fake.settings, secrets, fake.loginItem, fake.locale, fake.device,
            fake.applications, fake.browser, fake.statusItem, fake.windows, fake.look, fake.foreground, fake.updater,
            fake.report, fake.proxies};
        AppState state(lent, transport);

        state.bootstrap();
        QTRY_COMPARE_WITH_TIMEOUT(service.prompts(), 1, kPatienceMs);
        platform.clock.advance(1s);
        service.dismiss();

        QTRY_COMPARE_WITH_TIMEOUT(transport.count(endpoints::kAdsAvailable), 1, kPatienceMs);
        QCOMPARE(transport.paths(),
            (QStringList {endpoints::kRegister, endpoints::kWallet, endpoints::kHeartbeat, endpoints::kHeartbeat,
                endpoints::kAdsAvailable}));
        for (const auto& request : transport.requests()) {
            if (request.path != endpoints::kRegister)
                QCOMPARE(request.header("authorization"), "Bearer token-1");
        }
        QCOMPARE(state.activationCode(), u"KX4M-9TQ2"_s);
        QCOMPARE(service.calls(u"Prompt"_s), 1);
        QCOMPARE(service.calls(u"CreateItem"_s), 0);
        QVERIFY(!QFile::exists(home.filePath(u"secrets.json"_s)));
    }
};

QTEST_GUILESS_MAIN(RefusedKeyringTest)

#include "RefusedKeyringTest.moc"
