#include "api/CurlTransport.h"
#include "api/Endpoints.h"
#include "core/AppState.h"
#include "support/FakePlatform.h"
#include "support/Outcome.h"
#include "support/RawAnswers.h"
#include "support/RawService.h"
#include "support/Samples.h"
#include "support/TestAuthority.h"
#include "support/WaitFor.h"

#include <QRegularExpression>
#include <QSslSocket>
#include <QTest>

#include <algorithm>

using namespace orvella;
using namespace std::chrono_literals;
using namespace Qt::StringLiterals;

namespace {

constexpr auto kPause = 120s;
constexpr auto kLoopback = "IP:127.0.0.1"_L1;
constexpr qsizetype kMebibyte = 1'048'576;
/// No sentence is longer: two lines of the menu.
constexpr qsizetype kLongestSentence = 160;

const QByteArray kToken = "token-of-this-device";
/// What a service that hates its viewers would like them to read.
const QByteArray kSpite = R"({"ok":false,"error":"<b>token-of-this-device</b> http://evil.invalid/"})";

const QString kFine;
const auto kNotReached = u"The server could not be reached."_s;
const auto kLost = u"The connection to the server was lost."_s;
const auto kTimedOut = u"The request timed out."_s;
const auto kTooLarge = u"The server's answer was too large."_s;
const auto kRefused = u"The service could not answer the request."_s;
const auto kNotJson = u"The service's answer could not be read: it is not JSON."_s;
const auto kSignIn = u"The network answers in place of the service. You may have to sign in to it first."_s;
const auto kNotTrusted = u"The server's certificate is not trusted."_s;
const auto kNotSecure = u"No secure connection to the server could be made."_s;

using Fault = std::function<void(RawService&)>;

Fault answered(RawServer::Answer answer)
{
    return [answer = std::move(answer)](RawService& service) { service.breakDown(answer); };
}

Fault disfigured(std::function<QByteArray(const QByteArray& body)> bytes)
{
    return [bytes = std::move(bytes)](RawService& service) { service.disfigure(bytes); };
}

Fault withTls(const QSslConfiguration& tls)
{
    return [tls](RawService& service) { service.server().setTls(tls); };
}

QByteArray head(qsizetype length)
{
    return "HTTP/1.1 200 OK\r\ncontent-length: " + QByteArray::number(length) + "\r\n\r\n";
}

QByteArray location(const QByteArray& address)
{
    return "location: " + address + "\r\n";
}

/// The program's state in the middle of its life, over a real transport.
struct World {
    RawService& service;
    FakePlatform platform;
    CurlTransport transport;
    std::unique_ptr<AppState> state;

    World(RawService& used, CurlOptions options)
        : service(used)
        , transport(std::move(options))
    {
        platform.secrets.put(Keychain::kService, kToken);
        platform.settings.values.insert_or_assign(u"apiBaseURL"_s, service.server().url().toString());
        state = std::make_unique<AppState>(platform.lend(), transport);
        service.answer(endpoints::kAdsAvailable, AvailabilityResponse {true, kPause.count(), anAd()});
        state->bootstrap();
        rest();
    }

    /// Waits until the poll loop sleeps.
    void rest() const
    {
        QVERIFY(waitFor([this] { return platform.clock.sleepers() == 1; }));
    }

    /// One whole cycle of the poll loop, and a look at the wallet besides.
    void cycle()
    {
        service.forgetRequests();
        const Outcome wallet(state->refreshWallet());
        platform.clock.advance(kPause);
        QVERIFY(waitFor([&wallet] { return wallet.isThere(); }));
        rest();
    }

    [[nodiscard]] QString error() const { return state->lastError().value_or(kFine); }

    /// Everything that comes from the service but its errors.
    [[nodiscard]] auto figures() const
    {
        return std::tuple(state->availableAd(), state->statusTitle(), state->pollSeconds(), state->linked(),
            state->availableCents(), state->pendingCents(), state->paidCents(), state->lifetimeCents());
    }

    /// Each once: the loop may find the wallet overdue before the question of this cycle is answered.
    [[nodiscard]] QStringList askedPaths() const
    {
        auto paths = service.paths();
        paths.removeDuplicates();
        std::ranges::sort(paths);
        return paths;
    }
};

} // namespace

Q_DECLARE_METATYPE(Fault)

class ServiceFaultsTest final : public QObject {
    Q_OBJECT

private Q_SLOTS:

    void theProgramGoesOnAndSaysPlainlyWhatIsWrong_data()
    {
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<QString>("error");
        QTest::addColumn<std::chrono::milliseconds>("limit");
        addConnections();
        addSilence();
        addBodies();
        addStatuses();
    }

    void theProgramGoesOnAndSaysPlainlyWhatIsWrong()
    {
        QFETCH(const Fault, fault);
        QFETCH(const QString, error);
        QFETCH(const std::chrono::milliseconds, limit);
        RawService service;
        World world(service, {.limit = limit, .authorities = {}});

        check(world, fault, {error}, [] {});
        for (const auto& other : m_elsewhere)
            QVERIFY2(other->paths().isEmpty(), "Nobody is to be sent to another origin.");
    }

    /// What libcurl sees first is up to the moment: a connection that is lost, or one that never came about.
    void theProgramGoesOnAfterConnectionsThatAreResetAtOnce()
    {
        RawService service;
        World world(service, {});

        check(world, [](RawService& faulty) { faulty.cutConnections(); }, {kLost, kNotReached}, [] {});
    }

    void anInsecureServerGetsNothingAndTheProgramGoesOn_data()
    {
        QTest::addColumn<Fault>("fault");
        QTest::addColumn<QString>("error");
        const auto good = m_authority.server(kLoopback);
        QTest::newRow("as it should be") << withTls(good) << kFine;
        QTest::newRow("expired") << withTls(m_authority.server(kLoopback, -1))
                                 << u"The server's certificate has expired."_s;
        QTest::newRow("of another host") << withTls(m_authority.server(u"DNS:other.invalid"_s))
                                         << u"The server's certificate belongs to another server."_s;
        QTest::newRow("self-signed") << withTls(m_authority.selfSignedServer(kLoopback)) << kNotTrusted;
        QTest::newRow("of an authority that nobody knows") << withTls(TestAuthority().server(kLoopback)) << kNotTrusted;
        QTest::newRow("TLS 1.1") << withTls(TestAuthority::ofOldDays(good, "TLSv1.1")) << kNotSecure;
        QTest::newRow("TLS 1.0") << withTls(TestAuthority::ofOldDays(good, "TLSv1")) << kNotSecure;
    }

    void anInsecureServerGetsNothingAndTheProgramGoesOn()
    {
        QFETCH(const Fault, fault);
        QFETCH(const QString, error);
        const auto good = m_authority.server(kLoopback);
        RawService service(good);
        World world(service, {.authorities = m_authority.file()});

        check(world, fault, {error}, [&] {
            QCOMPARE(service.paths().isEmpty(), error != kFine);
            service.server().setTls(good);
        });
    }

    void aServerOfOldDaysSpeaksToWhoeverLetsIt_data()
    {
        QTest::addColumn<QByteArray>("protocol");
        QTest::newRow("TLS 1.1") << QByteArray("TLSv1.1");
        QTest::newRow("TLS 1.0") << QByteArray("TLSv1");
    }

    /// Otherwise the rows above would say nothing of the program.
    void aServerOfOldDaysSpeaksToWhoeverLetsIt()
    {
        QFETCH(const QByteArray, protocol);
        const RawServer server(
            TestAuthority::ofOldDays(m_authority.server(kLoopback), protocol), answer::reply(200, "{}"));
        QSslSocket client;
        client.setSslConfiguration(TestAuthority::ofOldDays({}, protocol));
        client.setPeerVerifyMode(QSslSocket::VerifyNone);

        client.connectToHostEncrypted(server.url().host(), server.port());

        QVERIFY(waitFor([&client] { return client.isEncrypted(); }));
    }

private:
    static void add(const char* name, const Fault& fault, const QString& error, std::chrono::milliseconds limit = 60s)
    {
        QTest::newRow(name) << fault << error << limit;
    }

    static void addConnections()
    {
        const auto half = head(4096) + kSpite;
        add("refused", [](RawService& service) { service.refuseConnections(); }, kNotReached);
        add("reset before any answer", answered(answer::bytesThenReset({})), kLost);
        add("closed before any answer", answered(answer::bytesThenEnd({})), kLost);
        add("reset in the head", answered(answer::bytesThenReset("HTTP/1.1 200 OK\r\ncont")), kLost);
        add("reset in the body", answered(answer::bytesThenReset(half)), kLost);
    }

    static void addSilence()
    {
        constexpr auto kShort = 1500ms;
        add("silence", answered(answer::silence()), kTimedOut, kShort);
        add("silence in the body", answered(answer::bytesThenSilence(head(4096) + kSpite)), kTimedOut, kShort);
        add("a body that drips", answered(answer::bytesThenDrip(head(4096), kSpite, 10ms)), kTimedOut, kShort);
    }

    static void addBodies()
    {
        const auto zeros = qCompress(QByteArray(64 * kMebibyte, '\0')).sliced(4);
        add("longer by its length", disfigured([](const auto& body) { return head(body.size() + 1) + body; }), kLost);
        add("shorter by its length", disfigured([](const auto& body) { return head(body.size() - 1) + body; }),
            kNotJson);
        add("small, but of 64 MiB when it is unpacked",
            answered(answer::reply(200, zeros, "content-encoding: deflate\r\n")), kNotJson);
        add("small, but of 64 MiB on the way",
            answered(answer::bytesThenEnd("HTTP/1.1 200 OK\r\ntransfer-encoding: deflate\r\n\r\n" + zeros)), kTooLarge);
        add("9 MiB", answered(answer::reply(200, QByteArray(9 * kMebibyte, ' '))), kTooLarge);
        add("a page", answered(answer::reply(200, "<!DOCTYPE html><p>Log in</p>", "content-type: text/html\r\n")),
            kSignIn);
        add("nothing", answered(answer::reply(200)), kNotJson);
        add("JSON of something else", answered(answer::reply(200, kSpite)),
            u"The service's answer could not be read: data is missing."_s);
    }

    void addStatuses()
    {
        const QByteArray interim = "HTTP/1.1 100 Continue\r\n\r\nHTTP/1.1 103 Early Hints\r\nlink: </a>\r\n\r\n";
        add("100 and 103 before the answer",
            disfigured([interim](const auto& body) { return interim + answer::http(200, body); }), kFine);
        add("100 alone", answered(answer::bytesThenEnd("HTTP/1.1 100 Continue\r\n\r\n")), kLost);
        add("101",
            answered(answer::bytesThenEnd(
                "HTTP/1.1 101 Switching Protocols\r\nupgrade: websocket\r\nconnection: upgrade\r\n\r\n")),
            kLost);
        add("204", answered(answer::bytesThenEnd("HTTP/1.1 204 No Content\r\n\r\n")), kNotJson);
        add("206 with the whole", disfigured([](const auto& body) { return answer::http(206, body); }), kFine);
        add("206 with a part", disfigured([](const auto& body) { return answer::http(206, body.first(9)); }), kNotJson);
        for (const int status : {301, 302, 303, 307, 308}) {
            const auto elsewhere = std::make_shared<RawService>();
            const auto away = location(elsewhere->server().url().resolved(QUrl(u"/api/mac/wallet"_s)).toEncoded());
            QTest::addRow("%d to the same origin", status)
                << answered(answer::reply(status, kSpite, location("/api/mac/wallet"))) << kSignIn << 60'000ms;
            m_elsewhere.push_back(elsewhere);
            QTest::addRow("%d to another origin", status) << Fault([status, away](RawService& service) {
                service.breakDown(answer::reply(status, kSpite, away));
            }) << kSignIn << 60'000ms;
        }
        for (const int status : {400, 401, 403, 404, 429, 500, 503}) {
            QTest::addRow("%d", status) << answered(answer::reply(status, kSpite, "retry-after: 1\r\n")) << kRefused
                                        << 60'000ms;
        }
    }

    /// A cycle under the fault, after which the program says one of these, and one after it.
    static void check(World& world, const Fault& fault, const QStringList& errors, const std::function<void()>& repair)
    {
        QCOMPARE(world.error(), kFine);
        QCOMPARE(world.state->availableAd(), anAd());
        const auto before = world.figures();
        const QStringList everyPath {endpoints::kAdsAvailable, endpoints::kHeartbeat, endpoints::kWallet};

        fault(world.service);
        world.cycle();

        QVERIFY2(errors.contains(world.error()), qPrintable(world.error()));
        checkSentence(world.error());
        QVERIFY(world.figures() == before);
        QCOMPARE(world.platform.clock.nextPause(), kPause);

        repair();
        world.service.recover();
        world.service.answer(endpoints::kAdsAvailable, noOffer());
        world.service.answer(endpoints::kWallet, WalletResponse {true, {1, 2, 3, 4}});
        world.cycle();

        QCOMPARE(world.error(), kFine);
        QCOMPARE(world.askedPaths(), everyPath);
        QCOMPARE(world.state->statusTitle(), u"$0.02"_s);
        QVERIFY(!world.state->availableAd());
    }

    static void checkSentence(const QString& text)
    {
        const QRegularExpression plain(uR"(^([A-Z][A-Za-z ':]+\.( |$))*$)"_s);
        QVERIFY2(plain.match(text).hasMatch(), qPrintable(text));
        QVERIFY(text.size() <= kLongestSentence);
        QVERIFY(!text.contains(QString::fromLatin1(kToken)));
    }

    TestAuthority m_authority;

    /// Where redirects lead to.
    std::vector<std::shared_ptr<RawService>> m_elsewhere;
};

QTEST_GUILESS_MAIN(ServiceFaultsTest)

#include "ServiceFaultsTest.moc"
