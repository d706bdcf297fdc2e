#include "api/APIClient.h"
#include "api/Endpoints.h"
#include "support/Dies.h"
#include "support/FakePlatform.h"
#include "support/FakeTransport.h"
#include "support/Samples.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

namespace {

struct World {
    FakePlatform platform;
    FakeTransport transport;

    World() { transport.answerEverything(); }

    [[nodiscard]] APIClient client() { return APIClient(platform.lend(), transport); }

    void useService(const QString& address) { platform.settings.values.insert_or_assign(u"apiBaseURL"_s, address); }
};

template <class T> void keep(QCoro::Task<Result<T>> task, std::optional<Result<T>>& kept)
{
    [](QCoro::Task<Result<T>> running, std::optional<Result<T>>& answer) -> QCoro::Task<> {
        auto result = co_await running;
        answer = std::move(result);
    }(std::move(task), kept);
}

/// The answer to a call once the main loop has nothing left to do.
template <class T> Result<T> answered(QCoro::Task<Result<T>> task)
{
    std::optional<Result<T>> answer;
    keep(std::move(task), answer);
    settle();
    if (!answer)
        qFatal("The call still waits.");
    return *std::move(answer);
}

} // namespace

class APIClientTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void withoutASettingTheProductionServiceIsUsed()
    {
        World world;

        const auto client = world.client();

        QCOMPARE(client.baseURL(), QUrl(QStringLiteral(ORVELLA_SERVICE_URL)));
        QCOMPARE(client.baseURL().scheme(), u"https"_s);
        QVERIFY(client.baseURL().path().isEmpty());
    }

    void theSettingSendsEveryRequestElsewhere()
    {
        World world;
        world.useService(u"http://127.0.0.1:8787"_s);
        auto client = world.client();

        const auto answer = answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QVERIFY(answer);
        QCOMPARE(world.transport.requests().front().http.url, QUrl(u"http://127.0.0.1:8787/api/mac/wallet"_s));
    }

    void aServiceAddressThatIsNoneStopsTheProgram_data()
    {
        QTest::addColumn<QString>("address");
        for (const auto* const address : {"", "service", "mailto:x@y.test", "ftp://a.test", "https://", "https://a b"})
            QTest::addRow("%s", address) << QString::fromLatin1(address);
    }

    void aServiceAddressThatIsNoneStopsTheProgram()
    {
        QFETCH(QString, address);

        QVERIFY(dies([&] {
            World world;
            world.useService(address);
            static_cast<void>(world.client());
        }));
    }

    void plainHttpIsForThisComputerOnly_data()
    {
        QTest::addColumn<QString>("address");
        QTest::addColumn<bool>("isTaken");
        const auto row = [](const char* address, bool isTaken) {
            QTest::newRow(address) << QString::fromLatin1(address) << isTaken;
        };
        row("http://localhost", true);
        row("HTTP://LOCALHOST:8787/", true);
        row("http://orvella.localhost:8787", true);
        row("http://127.0.0.1:8787", true);
        row("http://127.255.255.254", true);
        row("http://127.1", true);
        row("http://[::1]:8787", true);
        row("https://service.test", true);
        row("https://10.0.0.1", true);
        row("http://service.test", false);
        row("HTTP://service.test", false);
        row("http://10.0.0.1", false);
        row("http://128.0.0.1", false);
        row("http://127.999.0.1", false);
        row("http://127.256.1.1", false);
        row("http://127.0.0.99999999999", false);
        row("http://0.0.0.0", false);
        row("http://[::]", false);
        row("http://[::2]", false);
        row("http://localhost.", false);
        row("http://localhost.test", false);
        row("http://notlocalhost", false);
        row("http://127.0.0.1.test", false);
        row("http://127.0.0.1@service.test", false);
        row("http://service.test#@127.0.0.1", false);
        row("http://service.test?127.0.0.1", false);
        row("http://service.test/127.0.0.1", false);
    }

    void plainHttpIsForThisComputerOnly()
    {
        QFETCH(const QString, address);
        QFETCH(const bool, isTaken);
        const auto use = [&] {
            World world;
            world.useService(address);
            static_cast<void>(world.client());
        };

        if (isTaken)
            use();
        else
            QVERIFY(dies(use));
    }

    void aSettingThatIsNoTextCountsAsUnset()
    {
        World world;
        world.platform.settings.values.insert_or_assign(u"apiBaseURL"_s, Json(qint64 {5}));

        QCOMPARE(world.client().baseURL().scheme(), u"https"_s);
    }

    void pathsResolveRelativeToTheBase_data()
    {
        QTest::addColumn<QString>("base");
        QTest::addColumn<QString>("path");
        QTest::addColumn<QString>("expected");

        QTest::newRow("leading slash") << u"https://a.test"_s << u"/api/mac/wallet"_s
                                       << u"https://a.test/api/mac/wallet"_s;
        QTest::newRow("no leading slash")
            << u"https://a.test"_s << u"api/mac/wallet"_s << u"https://a.test/api/mac/wallet"_s;
        QTest::newRow("base with a slash")
            << u"https://a.test/"_s << u"/api/mac/wallet"_s << u"https://a.test/api/mac/wallet"_s;
        QTest::newRow("prefix with a slash is kept")
            << u"https://a.test/x/y/"_s << u"/api/mac/wallet"_s << u"https://a.test/x/y/api/mac/wallet"_s;
        QTest::newRow("prefix without a slash loses its last segment")
            << u"https://a.test/x/y"_s << u"/api/mac/wallet"_s << u"https://a.test/x/api/mac/wallet"_s;
        QTest::newRow("two slashes resolve from the root")
            << u"https://a.test/x/y/"_s << u"//api/mac/wallet"_s << u"https://a.test/api/mac/wallet"_s;
    }

    void pathsResolveRelativeToTheBase()
    {
        QFETCH(QString, base);
        QFETCH(QString, path);
        QFETCH(QString, expected);
        World world;
        world.useService(base);
        auto client = world.client();

        static_cast<void>(answered(client.get<WalletResponse>(path, {})));

        QCOMPARE(world.transport.requests().front().http.url.toString(), expected);
    }

    void statusDecides_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<bool>("succeeds");

        for (const int status : {200, 201, 299})
            QTest::addRow("%d", status) << status << true;
        for (const int status : {100, 199, 300, 301, 400, 401, 404, 500, 503})
            QTest::addRow("%d", status) << status << false;
    }

    void statusDecides()
    {
        QFETCH(int, status);
        QFETCH(bool, succeeds);
        World world;
        world.transport.answer(endpoints::kWallet, HttpReply {status, FakeTransport::envelope(toJson(aWallet()))});
        auto client = world.client();

        const auto answer = answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QCOMPARE(answer.has_value(), succeeds);
        if (!succeeds)
            QCOMPARE(answer.error().kind, Failure::Kind::badServerResponse);
    }

    void theTextOfAFailedReplyIsNeverShown()
    {
        World world;
        world.transport.answer(endpoints::kWallet, HttpReply {500, "internal secret"});
        auto client = world.client();

        const auto answer = answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QVERIFY(!answer.error().description.contains(u"secret"_s));
        QVERIFY(!answer.error().description.contains(u"500"_s));
    }

    void aNetworkThatAnswersInPlaceOfTheServiceIsNamed_data()
    {
        QTest::addColumn<int>("status");
        QTest::addColumn<QByteArray>("body");
        QTest::addColumn<Failure::Kind>("kind");

        const QByteArray page = "<!DOCTYPE html><title>Sign in</title>";
        QTest::newRow("a page") << 200 << page << Failure::Kind::undecodable;
        QTest::newRow("a page after blanks") << 200 << " \r\n\t" + page << Failure::Kind::undecodable;
        QTest::newRow("a page with a byte order mark") << 200 << "\xEF\xBB\xBF\n" + page << Failure::Kind::undecodable;
        QTest::newRow("the way to a page") << 302 << QByteArray() << Failure::Kind::badServerResponse;
        QTest::newRow("the way by the same method") << 307 << page << Failure::Kind::badServerResponse;
        QTest::newRow("the status for it") << 511 << page << Failure::Kind::badServerResponse;
    }

    void aNetworkThatAnswersInPlaceOfTheServiceIsNamed()
    {
        QFETCH(int, status);
        QFETCH(QByteArray, body);
        QFETCH(Failure::Kind, kind);
        World world;
        world.transport.answer(endpoints::kWallet, HttpReply {status, body});
        auto client = world.client();

        const auto answer = answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QCOMPARE(answer.error().kind, kind);
        QCOMPARE(answer.error().description,
            u"The network answers in place of the service. You may have to sign in to it first."_s);
    }

    void anAnswerWithAByteOrderMarkIsTheServices()
    {
        World world;
        world.transport.answer(
            endpoints::kWallet, HttpReply {200, "\xEF\xBB\xBF" + FakeTransport::envelope(toJson(aWallet()))});
        auto client = world.client();

        QVERIFY(answered(client.get<WalletResponse>(endpoints::kWallet, {})));
    }

    void status204WithAnEmptyBodyFailsInDecoding()
    {
        World world;
        world.transport.answer(endpoints::kPreferences, HttpReply {204, {}});
        auto client = world.client();

        const auto answer = answered(client.preferences([] { return APIClient::Preferences {}; }, {}));

        QCOMPARE(answer.error().kind, Failure::Kind::undecodable);
    }

    void aReplyThatSaysItIsNotOkStillCounts()
    {
        World world;
        auto text = FakeTransport::envelope(toJson(aWallet()));
        text.replace("\"ok\":true", "\"ok\":false");
        world.transport.answer(endpoints::kWallet, HttpReply {200, text});
        auto client = world.client();

        const auto answer = answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QVERIFY(answer);
        QCOMPARE(answer->wallet.availableCents, 637);
    }

    void aReplyThatCannotBeReadNamesThePathAndTheProblem()
    {
        World world;
        auto text = FakeTransport::envelope(toJson(aWallet()));
        text.replace("\"availableCents\":637", "\"availableCents\":6.37");
        world.transport.answer(endpoints::kWallet, HttpReply {200, text});
        auto client = world.client();

        const auto answer = answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QCOMPARE(answer.error(),
            (Failure {Failure::Kind::undecodable,
                u"The service's answer could not be read: data.wallet.availableCents is not an integer."_s}));
    }

    void aTransportFailureIsPassedOnUnchanged()
    {
        World world;
        world.transport.answer(endpoints::kWallet, failed(Failure::Kind::timedOut, u"The request timed out."_s));
        auto client = world.client();

        const auto answer = answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QCOMPARE(answer.error(), (Failure {Failure::Kind::timedOut, u"The request timed out."_s}));
    }

    void aPostCarriesItsBodyAndContentType()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");
        auto client = world.client();

        static_cast<void>(answered(client.complete(u"session-1"_s, {})));

        const auto& request = world.transport.requests().front();
        QCOMPARE(request.http.method, "POST");
        QCOMPARE(request.http.headers,
            (std::vector<HttpRequest::Header> {
                {"content-type", "application/json"}, {"authorization", "Bearer token"}}));
        QCOMPARE(request.http.body, "{\"sessionId\":\"session-1\"}");
        QCOMPARE(request.path, endpoints::kSessionComplete);
    }

    void aBodyThatIsNotUnicodeFailsBeforeAnythingIsSent()
    {
        World world;
        auto client = world.client();

        const auto answer = answered(client.complete(QString(QChar(0xd800)), {}));

        QCOMPARE(answer.error().kind, Failure::Kind::unencodable);
        QVERIFY(world.transport.requests().empty());
    }

    void withoutATokenTheRequestGoesOutWithoutAuthorization()
    {
        World world;
        auto client = world.client();

        const auto answer = answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QVERIFY(answer);
        QVERIFY(!world.transport.requests().front().header("authorization"));
    }

    void theTokenIsReadAnewForEveryRequest()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "one");
        auto client = world.client();
        static_cast<void>(answered(client.get<WalletResponse>(endpoints::kWallet, {})));

        world.platform.secrets.remove(Keychain::kService, u"default"_s);
        world.platform.secrets.put(Keychain::kService, "two");
        static_cast<void>(answered(client.get<WalletResponse>(endpoints::kWallet, {})));

        QCOMPARE(world.transport.requests().at(0).header("authorization"), "Bearer one");
        QCOMPARE(world.transport.requests().at(1).header("authorization"), "Bearer two");
    }

    void aTokenUnderTheOldNameIsCopiedByTheFirstRequest()
    {
        World world;
        world.platform.secrets.put(Keychain::kLegacyService, "old");
        auto client = world.client();

        static_cast<void>(answered(client.get<WalletResponse>(endpoints::kWallet, {})));

        QCOMPARE(world.transport.requests().front().header("authorization"), "Bearer old");
        QCOMPARE(world.platform.secrets.items(Keychain::kService), std::vector<QByteArray> {"old"});
        QCOMPARE(world.platform.secrets.items(Keychain::kLegacyService), std::vector<QByteArray> {"old"});
    }

    void registrationIsTheOneCallWithoutAToken()
    {
        World world;
        world.platform.secrets.put(Keychain::kService, "token");
        auto client = world.client();

        static_cast<void>(answered(client.registerDevice(true, false, false, {})));

        QVERIFY(!world.transport.requests().front().header("authorization"));
        QVERIFY(world.platform.secrets.operations.isEmpty());
    }

    void registrationFallsBackWhereTheSystemSaysNothing()
    {
        World world;
        world.platform.device.deviceName.reset();
        world.platform.device.version.reset();
        world.platform.locale.language.reset();
        auto client = world.client();

        static_cast<void>(answered(client.registerDevice(true, false, true, {})));

        const Json::Object expected {
            {u"deviceName"_s, u"Mac"_s},
            {u"appVersion"_s, u"0.1.0"_s},
            {u"anonymousMode"_s, true},
            {u"appSignalConsent"_s, false},
            {u"autoOpenAds"_s, true},
            {u"language"_s, u"en"_s},
        };
        QCOMPARE(world.transport.requests().front().body, expected);
    }

    void aSessionStartSendsTheAdsOwnLanguageAndCategories()
    {
        World world;
        auto client = world.client();
        auto ad = anAd();
        ad.language = u"fr"_s;

        const auto session = answered(client.startSession(ad, true, {}));

        const Json::Object expected {
            {u"campaignId"_s, u"campaign-1"_s},
            {u"creativeId"_s, u"creative-1"_s},
            {u"anonymousMode"_s, true},
            {u"language"_s, u"fr"_s},
            {u"matchedCategories"_s, QStringList {u"developer_tools"_s, u"design_tools"_s}},
        };
        QCOMPARE(world.transport.requests().front().body, expected);
        QCOMPARE(session->sessionId, u"session-1"_s);
    }

    void aStoppedCallIsACancellation()
    {
        World world;
        const auto wallet = world.transport.hold(endpoints::kWallet);
        auto client = world.client();
        std::stop_source source;
        std::optional<Result<WalletResponse>> answer;
        keep(client.get<WalletResponse>(endpoints::kWallet, source.get_token()), answer);
        QVERIFY(wallet.isAwaited());

        source.request_stop();

        QVERIFY(answer);
        QVERIFY(answer->error().isCancellation());
    }

    void aCallStoppedWhileTheKeyringIsLockedSendsNothing()
    {
        World world;
        world.platform.secrets.isLocked = true;
        auto client = world.client();
        std::stop_source source;
        std::optional<Result<WalletResponse>> answer;
        keep(client.get<WalletResponse>(endpoints::kWallet, source.get_token()), answer);

        source.request_stop();

        QVERIFY(answer);
        QVERIFY(answer->error().isCancellation());
        world.platform.secrets.unlock();
        QVERIFY(world.transport.requests().empty());
    }
};

QTEST_GUILESS_MAIN(APIClientTest)

#include "APIClientTest.moc"
