#include "api/ClientWorld.h"
#include "api/Endpoints.h"
#include "support/Samples.h"

#include <QTest>

using namespace orvella;
using namespace Qt::Literals::StringLiterals;

/// What a call sends, and what becomes of its answer.
class APIClientTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

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
        ClientWorld world;
        world.transport.answer(endpoints::kWallet, HttpReply {status, FakeTransport::envelope(toJson(aWallet()))});
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QCOMPARE(answer.has_value(), succeeds);
        if (!succeeds)
            QCOMPARE(answer.error().kind, Failure::Kind::badServerResponse);
    }

    void theTextOfAFailedReplyIsNeverShown()
    {
        ClientWorld world;
        world.transport.answer(endpoints::kWallet, HttpReply {500, "internal secret"});
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {}));

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
        ClientWorld world;
        world.transport.answer(endpoints::kWallet, HttpReply {status, body});
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QCOMPARE(answer.error().kind, kind);
        QCOMPARE(answer.error().description,
            u"The network answers in place of the service. You may have to sign in to it first."_s);
    }

    void anAnswerWithAByteOrderMarkIsTheServices()
    {
        ClientWorld world;
        world.transport.answer(
            endpoints::kWallet, HttpReply {200, "\xEF\xBB\xBF" + FakeTransport::envelope(toJson(aWallet()))});
        auto client = world.client();

        QVERIFY(ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {})));
    }

    void status204WithAnEmptyBodyFailsInDecoding()
    {
        ClientWorld world;
        world.transport.answer(endpoints::kPreferences, HttpReply {204, {}});
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.preferences([] { return APIClient::Preferences {}; }, {}));

        QCOMPARE(answer.error().kind, Failure::Kind::undecodable);
    }

    void aReplyThatSaysItIsNotOkStillCounts()
    {
        ClientWorld world;
        auto text = FakeTransport::envelope(toJson(aWallet()));
        text.replace("\"ok\":true", "\"ok\":false");
        world.transport.answer(endpoints::kWallet, HttpReply {200, text});
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QVERIFY(answer);
        QCOMPARE(answer->wallet.availableCents, 637);
    }

    void aReplyThatCannotBeReadNamesThePathAndTheProblem()
    {
        ClientWorld world;
        auto text = FakeTransport::envelope(toJson(aWallet()));
        text.replace("\"availableCents\":637", "\"availableCents\":6.37");
        world.transport.answer(endpoints::kWallet, HttpReply {200, text});
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QCOMPARE(answer.error(),
            (Failure {Failure::Kind::undecodable,
                u"The service's answer could not be read: data.wallet.availableCents is not an integer."_s}));
    }

    void aTransportFailureIsPassedOnUnchanged()
    {
        ClientWorld world;
        world.transport.answer(endpoints::kWallet, failed(Failure::Kind::timedOut, u"The request timed out."_s));
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QCOMPARE(answer.error(), (Failure {Failure::Kind::timedOut, u"The request timed out."_s}));
    }

    void aPostCarriesItsBodyAndContentType()
    {
        ClientWorld world;
        world.platform.secrets.put(Keychain::kService, "token");
        auto client = world.client();

        static_cast<void>(ClientWorld::answered(client.complete(u"session-1"_s, {})));

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
        ClientWorld world;
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.complete(QString(QChar(0xd800)), {}));

        QCOMPARE(answer.error().kind, Failure::Kind::unencodable);
        QVERIFY(world.transport.requests().empty());
    }

    void withoutATokenTheRequestGoesOutWithoutAuthorization()
    {
        ClientWorld world;
        auto client = world.client();

        const auto answer = ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {}));

        QVERIFY(answer);
        QVERIFY(!world.transport.requests().front().header("authorization"));
    }

    void theTokenIsReadAnewForEveryRequest()
    {
        ClientWorld world;
        world.platform.secrets.put(Keychain::kService, "one");
        auto client = world.client();
        static_cast<void>(ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {})));

        world.platform.secrets.remove(Keychain::kService, u"default"_s);
        world.platform.secrets.put(Keychain::kService, "two");
        static_cast<void>(ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {})));

        QCOMPARE(world.transport.requests().at(0).header("authorization"), "Bearer one");
        QCOMPARE(world.transport.requests().at(1).header("authorization"), "Bearer two");
    }

    void aTokenUnderTheOldNameIsCopiedByTheFirstRequest()
    {
        ClientWorld world;
        world.platform.secrets.put(Keychain::kLegacyService, "old");
        auto client = world.client();

        static_cast<void>(ClientWorld::answered(client.get<WalletResponse>(endpoints::kWallet, {})));

        QCOMPARE(world.transport.requests().front().header("authorization"), "Bearer old");
        QCOMPARE(world.platform.secrets.items(Keychain::kService), std::vector<QByteArray> {"old"});
        QCOMPARE(world.platform.secrets.items(Keychain::kLegacyService), std::vector<QByteArray> {"old"});
    }

    void registrationIsTheOneCallWithoutAToken()
    {
        ClientWorld world;
        world.platform.secrets.put(Keychain::kService, "token");
        auto client = world.client();

        static_cast<void>(ClientWorld::answered(client.registerDevice({}, {})));

        QVERIFY(!world.transport.requests().front().header("authorization"));
        QVERIFY(world.platform.secrets.operations.isEmpty());
    }

    void registrationFallsBackWhereTheSystemSaysNothing()
    {
        ClientWorld world;
        world.platform.device.deviceName.reset();
        world.platform.device.version.reset();
        world.platform.locale.language.reset();
        auto client = world.client();

        static_cast<void>(ClientWorld::answered(client.registerDevice({.autoOpenAds = true}, {})));

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
        ClientWorld world;
        auto client = world.client();
        auto ad = anAd();
        ad.language = u"fr"_s;

        const auto session = ClientWorld::answered(client.startSession(ad, true, {}));

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
        ClientWorld world;
        const auto wallet = world.transport.hold(endpoints::kWallet);
        auto client = world.client();
        std::stop_source source;
        const Outcome<Result<WalletResponse>> answer(
            client.get<WalletResponse>(endpoints::kWallet, source.get_token()));
        QVERIFY(wallet.isAwaited());

        source.request_stop();

        QVERIFY(answer.isThere());
        QVERIFY((*answer).error().isCancellation());
    }

    void aCallStoppedWhileTheKeyringIsLockedSendsNothing()
    {
        ClientWorld world;
        world.platform.secrets.isLocked = true;
        auto client = world.client();
        std::stop_source source;
        const Outcome<Result<WalletResponse>> answer(
            client.get<WalletResponse>(endpoints::kWallet, source.get_token()));

        source.request_stop();

        QVERIFY(answer.isThere());
        QVERIFY((*answer).error().isCancellation());
        world.platform.secrets.unlock();
        QVERIFY(world.transport.requests().empty());
    }
};

QTEST_GUILESS_MAIN(APIClientTest)

#include "APIClientTest.moc"
