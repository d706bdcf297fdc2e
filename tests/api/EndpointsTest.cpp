#include "api/Endpoints.h"

#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"
#include "ui/ad/AdViewing.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

/// What makes a call, given the state and a viewing whose session has started.
using Caller = std::function<void(AppState&, AdViewing&)>;

} // namespace

Q_DECLARE_METATYPE(Caller)

/// The contract with the service, written out.
class EndpointsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:
    void everyCallGoesWhereTheServiceExpectsIt_data()
    {
        QTest::addColumn<Caller>("call");
        QTest::addColumn<QByteArray>("method");
        QTest::addColumn<QString>("path");
        QTest::addColumn<bool>("isAuthorized");

        const auto row = [](const char* path, const char* method, bool isAuthorized, const Caller& call) {
            QTest::newRow(path) << call << QByteArray(method) << QString::fromLatin1(path) << isAuthorized;
        };
        row("/api/mac/device/register", "POST", false,
            [](AppState& state, AdViewing&) { state.api().registerDevice({}, {}); });
        row("/api/mac/device/heartbeat", "POST", true, [](AppState& state, AdViewing&) { state.heartbeat(); });
        row("/api/mac/ads/available", "POST", true, [](AppState& state, AdViewing&) { state.pollForAd(); });
        row("/api/mac/preferences", "POST", true, [](AppState& state, AdViewing&) { state.sendPreferences(); });
        row("/api/mac/ads/session/start", "POST", true,
            [](AppState& state, AdViewing&) { state.api().startSession(anAd(), true, {}); });
        row("/api/mac/ads/session/complete", "POST", true,
            [](AppState& state, AdViewing&) { state.api().complete(u"session-1"_s, {}); });
        row("/api/mac/ads/click", "POST", true, [](AppState&, AdViewing& viewing) { viewing.openAd(); });
        row("/api/mac/wallet", "GET", true, [](AppState& state, AdViewing&) { state.refreshWallet(); });
    }

    void everyCallGoesWhereTheServiceExpectsIt()
    {
        QFETCH(Caller, call);
        QFETCH(QByteArray, method);
        QFETCH(QString, path);
        QFETCH(bool, isAuthorized);
        FakePlatform platform;
        FakeTransport transport;
        transport.answerEverything();
        platform.secrets.put(Keychain::kService, "token");
        platform.settings.values.insert_or_assign(u"apiBaseURL"_s, u"http://127.0.0.1:8787"_s);
        AppState state(platform.lend(), transport);
        AdViewing viewing(anAd(), state.api(), true, platform.clock, platform.browser, {[] {}, [] {}, [] {}, {}, {}});
        viewing.start();
        settle();
        transport.forgetRequests();

        call(state, viewing);
        settle();

        QCOMPARE(transport.requests().size(), 1U);
        const auto& sent = transport.requests().front();
        QCOMPARE(sent.http.url.toString(), u"http://127.0.0.1:8787"_s + path);
        QCOMPARE(sent.http.method, method);
        QCOMPARE(sent.header("authorization"), isAuthorized ? std::optional<QByteArray>("Bearer token") : std::nullopt);
        QCOMPARE(sent.header("content-type"),
            method == "POST" ? std::optional<QByteArray>("application/json") : std::nullopt);
        QCOMPARE(sent.http.body.isEmpty(), method == "GET");
    }
};

QTEST_GUILESS_MAIN(EndpointsTest)

#include "EndpointsTest.moc"
